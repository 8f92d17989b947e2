// The company and period window, opened on its own (not modal) with a real main window behind.

#include "Inicio.h"

#include <QScrollBar>

class TstFrmOpciones : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        libro = std::make_unique<LibroDePrueba>();
        LlenarLibro(*libro);
        principal = std::make_unique<frmMAIN>(libro->S());
    }
    void cleanup()
    {
        principal.reset();
        libro.reset();
    }
    void elegirConElTeclado()
    {
        auto f = Abrir(kAlfa, kNov);
        QTest::keyClick(f->cboUSR, Qt::Key_Down);
        QTest::keyClick(f->cboMES, Qt::Key_End);
        Escribir(f->TxtYear, QStringLiteral("2005"));
        QTest::keyClick(f->TxtYear, Qt::Key_F11);

        const Sesion &s = libro->S();
        QVERIFY(!s.Cancelado);
        QVERIFY(!f->isVisible());
        QCOMPARE(s.CuitUsuario, kBeta);
        QCOMPARE(s.NombreUsuario, QStringLiteral("Beta SRL"));
        QCOMPARE(s.ConIva, QStringLiteral("N"));
        QCOMPARE(s.DomicilioUsuario, QStringLiteral("Calle 1"));
        QCOMPARE(s.EmailUsuario, QStringLiteral("info@empresa.com.ar"));
        QCOMPARE(s.MesPeriodo, qint16(12));
        QCOMPARE(s.PeriodoDesde, QStringLiteral("01/12/2005"));
        QCOMPARE(Recordado("USRSNROCUIT"), kBeta);
        QCOMPARE(Recordado("IVCFPERIOD"), QStringLiteral("01/12/2005"));
        // The main window shows the chosen company and period.
        QCOMPARE(principal->Grd->Rows(), 2);
        QCOMPARE(principal->Grd->TextMatrix(1, 0), QStringLiteral("02/12/05"));
        QCOMPARE(principal->LbTot->text(), QStringLiteral("121,00"));
    }
    void escCancela()
    {
        auto f = Abrir(kAlfa, QStringLiteral("15/03/2005"));
        QTest::keyClick(f->cboUSR, Qt::Key_Down);
        QTest::keyClick(f->cboUSR, Qt::Key_Escape);
        QVERIFY(libro->S().Cancelado);
        QVERIFY(!f->isVisible());
        QCOMPARE(libro->S().CuitUsuario, kAlfa);
        QCOMPARE(libro->S().PeriodoDesde, QStringLiteral("01/03/2005"));
        QCOMPARE(Recordado("IVCFPERIOD"), QStringLiteral("15/03/2005"));
        QCOMPARE(principal->Grd->Rows(), 1);
    }
    void enterPasaAlSiguiente_data()
    {
        QTest::addColumn<QString>("desde");
        QTest::addColumn<QString>("hasta");
        QTest::newRow("empresa") << "cboUSR" << "cboMES";
        QTest::newRow("mes") << "cboMES" << "TxtYear";
        QTest::newRow("anio") << "TxtYear" << "VScroll1";
        QTest::newRow("barra") << "VScroll1" << "cboUSR";
    }
    void enterPasaAlSiguiente()
    {
        QFETCH(QString, desde);
        QFETCH(QString, hasta);
        auto f = Abrir(kAlfa, kNov);
        auto *w = f->findChild<QWidget *>(desde);
        w->setFocus();
        QTest::keyClick(w, Qt::Key_Return);
        QVERIFY(QApplication::focusWidget());
        QCOMPARE(QApplication::focusWidget()->objectName(), hasta);
        QVERIFY(f->isVisible());
    }
    void barraDelAnio()
    {
        auto f = Abrir(kAlfa, kNov);
        QTest::keyClick(f->VScroll1, Qt::Key_Up);
        QCOMPARE(f->TxtYear->text(), QStringLiteral("2027"));
        QTest::keyClick(f->VScroll1, Qt::Key_Down);
        QTest::keyClick(f->VScroll1, Qt::Key_Down);
        QCOMPARE(f->TxtYear->text(), QStringLiteral("2025"));
        QVERIFY(f->VScroll1->minimum() <= 1990 && f->VScroll1->maximum() >= 2026);
    }
    // The company changed; the period and the remembered choice did not; the window closed and the
    // main list shows the new company in the old period.
    void empresaBorradaAlConfirmar()
    {
        auto f = Abrir(kAlfa, QStringLiteral("01/12/2005"));
        libro->Ejecutar(QStringLiteral("personal.mdb"), {QStringLiteral("delete from USR where USRSNRCUIT = '%1'").arg(kBeta)});
        QTest::keyClick(f->cboUSR, Qt::Key_Down);
        QTest::keyClick(f->cboMES, Qt::Key_Up);
        QTest::keyClick(f->cboMES, Qt::Key_F11);
        const Sesion &s = libro->S();
        QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("No se encuentra la información de este usuario."));
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
        QCOMPARE(s.CuitUsuario, kBeta);
        QCOMPARE(s.PeriodoDesde, QStringLiteral("01/12/2005"));
        QVERIFY(!s.Cancelado);
        QVERIFY(!f->isVisible());
        QCOMPARE(Recordado("USRSNROCUIT"), kAlfa);
        QCOMPARE(principal->Grd->TextMatrix(1, 0), QStringLiteral("02/12/05"));
    }
    void baseInexistente()
    {
        libro->S().ajustes.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QStringLiteral("PERSONAL"),
                                   libro->Carpeta() + QStringLiteral("no/"));
        auto f = Abrir(QString(), QString());
        QCOMPARE(f->cboUSR->count(), 0);
        QCOMPARE(libro->Mensajes().mostrados.size(), 1);
        QVERIFY(libro->Mensajes().Ultimo().contains(libro->Carpeta() + QStringLiteral("no/personal.mdb")));
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
        QTest::keyClick(f->cboUSR, Qt::Key_Escape);
        QVERIFY(libro->S().Cancelado);
    }

private:
    // LeerDatos as at start-up, then the window loaded, shown and active.
    std::unique_ptr<frmOpciones> Abrir(const QString &cuit, const QString &periodo)
    {
        libro->Recordar(cuit, periodo);
        LeerDatos(libro->S());
        auto f = std::make_unique<frmOpciones>(libro->S(), principal.get());
        f->show();
        f->activateWindow();
        if (!QTest::qWaitForWindowActive(f.get()))
            qWarning("window not active");
        return f;
    }
    QString Recordado(const char *clave) const
    {
        return libro->S().ajustes.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QString::fromLatin1(clave));
    }
    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmMAIN> principal;
};

QTEST_MAIN(TstFrmOpciones)
#include "tst_frmopciones.moc"
