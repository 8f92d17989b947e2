// The supplier window on a real book, driven by key events on its shown, active widgets, on its
// own and opened by F5 from the main window.

#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/invoice/Teclado.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/frmMAIN.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPointer>
#include <QTableWidget>

class TstFrmLSTPROV : public QObject
{
    Q_OBJECT

    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmLSTPROV> w;

    // The window on the book with the given suppliers ("cuit|name"), shown and active.
    void Abrir(const QStringList &proveedores = {})
    {
        for (const QString &p : proveedores)
            libro->Proveedor(p.section(u'|', 0, 0), p.section(u'|', 1));
        w = std::make_unique<frmLSTPROV>(libro->S());
        Mostrar(*w);
    }
    QStringList Grilla() const
    {
        QStringList filas;
        for (int f = 0; f < w->cGRID->rowCount(); ++f)
            filas << w->cGRID->item(f, 0)->text() + u'|' + w->cGRID->item(f, 1)->text();
        return filas;
    }
    QStringList Proveedores() const
    {
        return libro->Filas(QStringLiteral("select '['||PRVSNRCUIT||']', '['||PRVSNOMBRE||']', PRVSDOMICI, PRVSTELFON, "
                                           "PRVSEMAIL, PRVSCONTAC, PRVFALTA from PRV order by PRVSNRCUIT"));
    }
    MensajesGuion &M() { return libro->Mensajes(); }
    // The last message and its icon, as "text|style".
    QString Aviso() { return M().Ultimo() + u'|' + QString::number(M().UltimoEstilo()); }
    static QString Con(const QString &texto, int estilo) { return texto + u'|' + QString::number(estilo); }

private slots:
    void init() { libro = std::make_unique<LibroDePrueba>(); }
    void cleanup()
    {
        w.reset();
        libro.reset();
    }

    void agregarConElTeclado()
    {
        Abrir({"30-2|delta", "30-1|Beta"});
        QCOMPARE(Grilla(), QStringList({"30-1|Beta", "30-2|delta"}));
        QCOMPARE(w->cGRID->currentRow(), 1);

        Tecla(Qt::Key_Insert);
        QVERIFY(w->Estado() == 1 && w->Frame1->isVisible() && !w->cGRID->isEnabled() && Foco() == w->txtCUIT);
        Teclas({"30-3", Qt::Key_Return, "Charly", Qt::Key_Return, "Calle 1", Qt::Key_Return, "555", Qt::Key_Return,
                "c@c.com", Qt::Key_Return, "Ana", Qt::Key_F11});
        QCOMPARE(Aviso(), Con("Datos guardatos correctamente.", vb::vbInformation));
        QCOMPARE(Proveedores().at(2), "[30-3]|[Charly]|Calle 1|555|c@c.com|Ana|21/11/2026");
        // Back to browse: the grid reloaded in name order, the fields emptied.
        QCOMPARE(Grilla(), QStringList({"30-1|Beta", "30-3|Charly", "30-2|delta"}));
        QVERIFY(w->Estado() == 0 && Foco() == w->cGRID && (w->txtCUIT->text() + w->txtContacto->text()).isEmpty());
    }

    // An insert refused: the message, nothing written, still inserting. No value is escaped: an
    // apostrophe fails the save with the error report.
    void altaRechazada_data()
    {
        QTest::addColumn<QStringList>("existentes");
        QTest::addColumn<QString>("cuit");
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QString>("mensaje"); // part of the message, and its icon
        const QString falta = Con(QStringLiteral("Debe ingresar como mínimo CUIT y NOMBRE."), vb::vbInformation);
        QTest::newRow("nombre de blancos") << QStringList() << "30-1" << "   " << falta;
        QTest::newRow("cuit de blancos") << QStringList() << "  " << "Acme" << falta;
        QTest::newRow("cuit repetido") << QStringList{"30-1|Beta"} << "30-1" << "Otro" << "Ya existe un proveedor con ese CUIT.";
        QTest::newRow("apostrofe") << QStringList() << "30-9'" << "Nuevo"
                                   << Con("Seccion [frmLSTPROV.lpGuardar]", vb::vbCritical);
    }
    void altaRechazada()
    {
        QFETCH(QStringList, existentes);
        QFETCH(QString, cuit);
        QFETCH(QString, nombre);
        QFETCH(QString, mensaje);
        Abrir(existentes);
        Teclas({Qt::Key_Insert, cuit, Qt::Key_Return, nombre, Qt::Key_F11});
        QVERIFY2(Aviso().contains(mensaje) && M().mostrados.size() == 1, qPrintable(Aviso()));
        QCOMPARE(QPair(Proveedores().size(), w->Estado()), QPair(existentes.size(), 1));
    }

    // The update trims every value; the CUIT cannot be changed. Insert while modifying keeps the
    // supplier's data in the fields; Esc discards the entries and goes back to browse; in browse
    // it closes the window.
    void modificarInsertarYEscape()
    {
        Abrir({"30-1|Beta", "30-2|Delta"});
        Teclas({Qt::Key_Up, Qt::Key_Return});
        const QStringList campos{QString::number(w->Estado()), w->txtCUIT->text(), w->txtNombre->text(),
                                 w->txtDomicilio->text(), w->txtTelefono->text(), w->txtMail->text(),
                                 w->txtContacto->text()};
        QCOMPARE(campos.join(u'|'), "2|30-1|Beta|Av. Siempreviva 742|4444-5555|p@x.com|Juan");
        // The name has the focus, its text selected: typing replaces it.
        QVERIFY(!w->txtCUIT->isEnabled() && Foco() == w->txtNombre);
        Teclas({"  Epsilon  ", Qt::Key_Down, " Calle 2 ", Qt::Key_F11});

        QCOMPARE(Proveedores().first(), "[30-1]|[Epsilon]|Calle 2|4444-5555|p@x.com|Juan|01/01/2020");
        QCOMPARE(Grilla(), QStringList({"30-2|Delta", "30-1|Epsilon"}));
        QVERIFY(w->txtCUIT->isEnabled());

        Teclas({Qt::Key_Return, Qt::Key_Insert});
        const QString fila = w->txtCUIT->text() + u'|' + w->txtNombre->text();
        QCOMPARE(QStringList({QString::number(w->Estado()), fila, w->txtContacto->text()}),
                 QStringList({"1", Grilla().value(w->cGRID->currentRow()), "Juan"}));
        Tecla(Qt::Key_Escape);
        QCOMPARE(QString::number(w->Estado()) + w->txtCUIT->text() + w->txtNombre->text(), "0");
        QVERIFY(w->txtCUIT->isEnabled() && w->isVisible() && Foco() == w->cGRID);
        Tecla(Qt::Key_Escape);
        QVERIFY(!w->isVisible());
        QCOMPARE(QPair(M().mostrados.size(), libro->Contar("PRV")), QPair(qsizetype(1), 2L));
    }

    void eliminarYLibroVacio()
    {
        Abrir({"30-1|Prov 1", "30-2|Prov 2", "30-3|Prov 3"});
        Tecla(Qt::Key_Up);
        M().Responder(vb::vbNo);
        Tecla(Qt::Key_Delete);
        QCOMPARE(Aviso(), Con("Confirma eliminar el Proveedor seleccionado con el CUIT 30-2", vb::vbYesNo | vb::vbQuestion));
        QCOMPARE(libro->Contar("PRV"), 3L);

        Tecla(Qt::Key_Delete);
        QCOMPARE(M().mostrados.size(), 2);
        QCOMPARE(Grilla(), QStringList({"30-1|Prov 1", "30-3|Prov 3"}));

        // Removed by someone else since the grid was loaded: the delete finds nothing.
        libro->Ejecutar("delete from PRV");
        M().Limpiar();
        Tecla(Qt::Key_Delete);
        QCOMPARE(M().mostrados.size(), 2);
        QCOMPARE(Aviso(), Con("No se pudo eliminar el Proveedor seleccionado", vb::vbExclamation));
        QCOMPARE(w->FilasGrilla(), 3);

        // On the emptied book the list is empty; Enter, Delete and F11 do nothing.
        M().Limpiar();
        Abrir();
        QVERIFY(w->FilasGrilla() == 1 && Foco() == w->cGRID);
        Teclas({Qt::Key_Return, Qt::Key_Delete, Qt::Key_F11});
        QVERIFY(w->Estado() == 0 && !w->Frame1->isVisible() && M().mostrados.isEmpty());
    }

    // F5 on the main window opens this window beside it, not modal; what it saves is what an
    // invoice window opened afterwards offers, both in the Spanish order.
    void f5AbreLaVentanaNoModal()
    {
        libro->Empresa("20-9", "Empresa");
        libro->Periodo("20-9", "01/11/2026");
        int cuit = 0;
        for (const char *n : {"Limpieza Cristalina", "Ñandú", "Lácteos La Cañada", "Oasis", "Nutria"})
            libro->Proveedor(QStringLiteral("30-%1").arg(++cuit), QString::fromUtf8(n));
        frmMAIN principal(libro->S());
        Mostrar(principal);
        QTest::keyClick(principal.Grd, Qt::Key_F5);
        const QPointer<frmLSTPROV> prov = principal.findChild<frmLSTPROV *>();
        QVERIFY(prov && prov->isVisible() && prov->isWindow() && prov->windowModality() == Qt::NonModal);
        QTRY_COMPARE(QApplication::activeWindow(), prov.data());
        Teclas({Qt::Key_Insert, "30-9", Qt::Key_Return, "Nz"});
        // The main window stays usable; F5 again brings the same window forward, as it was (the
        // name typed is saved below).
        principal.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&principal));
        Tecla(Qt::Key_F5);
        QCOMPARE(principal.findChildren<frmLSTPROV *>(), QList<frmLSTPROV *>({prov}));
        QTRY_COMPARE(QApplication::activeWindow(), prov.data());
        Tecla(Qt::Key_F11);
        const QStringList orden = {"Lácteos La Cañada", "Limpieza Cristalina", "Nutria", "Nz", "Ñandú", "Oasis"};
        QStringList grilla, combo;
        for (int f = 0; f < prov->cGRID->rowCount(); ++f)
            grilla << prov->cGRID->item(f, 1)->text();
        Tecla(Qt::Key_Escape);
        QTRY_VERIFY(!prov);

        frmADDConcepto factura(libro->S(), &principal);
        for (int i = 0; i < factura.cboProv->count(); ++i)
            combo << factura.cboProv->itemText(i);
        QCOMPARE(QList({grilla, combo}), QList({orden, orden}));
        QCOMPARE(factura.cboIdProv->itemText(3), "30-9");
    }
};

QTEST_MAIN(TstFrmLSTPROV)
#include "tst_frmlstprov.moc"
