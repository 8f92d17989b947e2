// The program pointed at the books of the old program: at start-up the company and period
// window says which file is an Access book, offers to convert the folder, and on Yes and a
// folder converts it under a progress window (Esc cancels) and opens the converted books.

#include "Inicio.h"
#include "common/CarpetaGuion.h"

#include <QProgressDialog>

class TstImportarAccessVentana : public QObject
{
    Q_OBJECT
private slots:
    void arranqueConLibrosDeAccess_data()
    {
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<QString>("destino"); // the dialog's answer; empty is Cancel
        QTest::addColumn<bool>("cancela");    // Esc in the progress window
        QTest::addColumn<int>("empresas");    // in the company list once the window opens
        QTest::newRow("convierte y abre") << int(vb::vbYes) << "convertidos" << false << 3;
        QTest::newRow("no convierte") << int(vb::vbNo) << "" << false << 0;
        QTest::newRow("cancela la carpeta") << int(vb::vbYes) << "" << false << 0;
        QTest::newRow("cancela la conversión") << int(vb::vbYes) << "convertidos" << true << 0;
    }

    void arranqueConLibrosDeAccess()
    {
        QFETCH(int, respuesta);
        QFETCH(QString, destino);
        QFETCH(bool, cancela);
        QFETCH(int, empresas);
        LibroDePrueba libro;
        const QString carpeta = libro.Carpeta(), viejos = carpeta + QStringLiteral("viejos/");
        QDir().mkpath(viejos);
        const QString fixturas = QStringLiteral(IVC_FIXTURAS "/access/jet4/");
        for (const QString &f : QDir(fixturas).entryList(QDir::Files))
            QFile::copy(fixturas + f, viejos + f);
        const Ajustes &ajustes = libro.S().ajustes;
        for (const char *clave : {"FACTURACION", "KESTRELRAS", "PERSONAL", "SYSTABLAS"})
            ajustes.Guardar("FACTURACION", "BASES", QString::fromLatin1(clave), viejos);
        libro.Recordar(QStringLiteral("30687100391"), QStringLiteral("01/12/2026"));
        MensajesGuion &mensajes = libro.Mensajes();
        mensajes.Responder(respuesta);
        CarpetaGuion dialogo(destino.isEmpty() ? QString() : carpeta + destino);
        libro.S().dialogoCarpeta = &dialogo;
        frmMAIN w(libro.S());
        int visto = -1;
        AlAbrirse<frmOpciones>([&visto](frmOpciones &f) {
            visto = f.cboUSR->count();
            QTest::keyClick(f.cboUSR, visto > 0 ? Qt::Key_F11 : Qt::Key_Escape);
        });
        // The progress window is painted as the tables are copied: what it said is kept.
        QStringList avance;
        QTimer vigia;
        QObject::connect(&vigia, &QTimer::timeout, [&] {
            auto *p = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            if (p && p->isVisible() && avance.value(avance.size() - 1) != p->labelText()) {
                avance << p->labelText();
                if (cancela)
                    QTest::keyClick(p, Qt::Key_Escape);
            }
        });
        vigia.start(0);
        QCOMPARE(w.Form_Load(), empresas > 0);
        vigia.stop();
        QCOMPARE(visto, empresas);

        // The question names the file (the command in it is checked with the Access books); the
        // folder is asked only on Yes.
        const auto pregunta = mensajes.mostrados.value(0);
        QCOMPARE(pregunta.estilo, vb::vbYesNo + vb::vbQuestion);
        QVERIFY2(pregunta.texto.contains(viejos + QStringLiteral("personal.mdb")), qPrintable(pregunta.texto));
        QCOMPARE(dialogo.pedidos.size(), respuesta == vb::vbYes ? 1 : 0);
        if (respuesta == vb::vbYes)
            QCOMPARE(dialogo.pedidos[0].carpetaInicial + u'/' + dialogo.pedidos[0].nombreInicial,
                     carpeta + QStringLiteral("viejos-convertido"));
        QCOMPARE(avance.size() > 1, empresas > 0);
        const QString kestrel = ajustes.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QStringLiteral("KESTRELRAS"));
        QCOMPARE(mensajes.mostrados.size(), empresas > 0 || cancela ? 2 : 1);
        if (empresas == 0) {
            QVERIFY(!cancela || mensajes.Ultimo().startsWith(QStringLiteral("Se canceló la conversión")));
            QCOMPARE(kestrel, viejos);
            QCOMPARE(QDir(carpeta).entryList(QDir::Dirs | QDir::NoDotAndDotDot), (QStringList{"ajustes", "viejos"}));
            return;
        }
        // Converted: the settings point at the new books and the main window lists the remembered
        // company's December 2026, two invoices.
        QCOMPARE((QStringList{QString::number(mensajes.UltimoEstilo()), kestrel, libro.S().RutaLibro,
                              w.lbUSRSNOMBR->text(), QString::number(w.Grd->Rows())}),
                 (QStringList{QString::number(vb::vbInformation), carpeta + destino + u'/', kestrel,
                              "Ferretería Ñandú S.R.L.", "3"}));
    }
};

QTEST_MAIN(TstImportarAccessVentana)
#include "tst_importaraccessventana.moc"
