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
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

namespace {
const QString kGuardado = QStringLiteral("Datos guardatos correctamente.");
} // namespace

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
    static void Activar(QWidget *v)
    {
        v->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), v);
    }

private slots:
    void init() { libro = std::make_unique<LibroDePrueba>(); }
    void cleanup()
    {
        w.reset();
        libro.reset();
    }

    void libroVacio()
    {
        Abrir();
        QCOMPARE(w->FilasGrilla(), 1);
        QCOMPARE(QApplication::focusWidget(), w->cGRID);
        Teclas({Qt::Key_Return, Qt::Key_Delete, Qt::Key_F11});
        QCOMPARE(w->Estado(), 0);
        QVERIFY(!w->Frame1->isVisible() && M().mostrados.isEmpty());
    }

    void agregarConElTeclado()
    {
        Abrir({QStringLiteral("30-2|delta"), QStringLiteral("30-1|Beta")});
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-2|delta")}));
        QCOMPARE(w->cGRID->currentRow(), 1);

        Tecla(Qt::Key_Insert);
        QCOMPARE(w->Estado(), 1);
        QVERIFY(w->Frame1->isVisible() && !w->cGRID->isEnabled());
        QCOMPARE(QApplication::focusWidget(), w->txtCUIT);
        Teclas({"30-3", Qt::Key_Return, "Charly", Qt::Key_Return, "Calle 1", Qt::Key_Return, "555", Qt::Key_Return,
                "c@c.com", Qt::Key_Return, "Ana", Qt::Key_F11});
        QCOMPARE(Aviso(), Con(kGuardado, vb::vbInformation));
        QCOMPARE(Proveedores().at(2), QStringLiteral("[30-3]|[Charly]|Calle 1|555|c@c.com|Ana|21/11/2026"));
        // Back to browse: the grid reloaded in name order, the fields emptied.
        QCOMPARE(w->Estado(), 0);
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-3|Charly"),
                                        QStringLiteral("30-2|delta")}));
        QCOMPARE(QApplication::focusWidget(), w->cGRID);
        QCOMPARE(w->txtCUIT->text() + w->txtContacto->text(), QString());
    }

    // An insert refused: the message, nothing written, still inserting.
    void altaRechazada_data()
    {
        QTest::addColumn<QStringList>("existentes");
        QTest::addColumn<QString>("cuit");
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QString>("mensaje"); // how the message starts, and its icon
        const QString falta = Con(QStringLiteral("Debe ingresar como mínimo CUIT y NOMBRE."), vb::vbInformation);
        QTest::newRow("nombre de blancos") << QStringList() << "30-1" << "   " << falta;
        QTest::newRow("sin nombre") << QStringList() << "30-1" << "" << falta;
        QTest::newRow("cuit de blancos") << QStringList() << "  " << "Acme" << falta;
        QTest::newRow("cuit repetido") << QStringList{"30-1|Beta"} << "30-1" << "Otro" << "Ya existe un proveedor con ese CUIT.";
    }
    void altaRechazada()
    {
        QFETCH(QStringList, existentes);
        QFETCH(QString, cuit);
        QFETCH(QString, nombre);
        QFETCH(QString, mensaje);
        Abrir(existentes);
        Teclas({Qt::Key_Insert, cuit, Qt::Key_Return, nombre, Qt::Key_F11});
        QVERIFY2(Aviso().startsWith(mensaje), qPrintable(Aviso()));
        QCOMPARE(QPair(Proveedores().size(), w->Estado()), QPair(existentes.size(), 1));
    }

    // The update trims every value; the CUIT cannot be changed.
    void modificarRecortaLosValores()
    {
        Abrir({QStringLiteral("30-1|Beta"), QStringLiteral("30-2|Delta")});
        Teclas({Qt::Key_Up, Qt::Key_Return});
        QCOMPARE(w->Estado(), 2);
        QCOMPARE((QStringList{w->txtCUIT->text(), w->txtNombre->text(), w->txtDomicilio->text(), w->txtTelefono->text(),
                              w->txtMail->text(), w->txtContacto->text()}).join(u'|'),
                 QStringLiteral("30-1|Beta|Av. Siempreviva 742|4444-5555|p@x.com|Juan"));
        QVERIFY(!w->txtCUIT->isEnabled());
        // The name has the focus, its text selected: typing replaces it.
        QCOMPARE(QApplication::focusWidget(), w->txtNombre);
        Teclas({"  Epsilon  ", Qt::Key_Down, " Calle 2 ", Qt::Key_F11});

        QCOMPARE(M().Ultimo(), kGuardado);
        QCOMPARE(Proveedores().first(), QStringLiteral("[30-1]|[Epsilon]|Calle 2|4444-5555|p@x.com|Juan|01/01/2020"));
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-2|Delta"), QStringLiteral("30-1|Epsilon")}));
        QVERIFY(w->txtCUIT->isEnabled());
    }

    // Inserted with its blanks, looked up trimmed on update: no row, no message, still modifying.
    void cuitConBlancos()
    {
        Abrir();
        Teclas({Qt::Key_Insert, "  30-5 ", Qt::Key_Return, " Beta ", Qt::Key_F11});
        const QStringList insertado{QStringLiteral("[  30-5 ]|[ Beta ]|||||21/11/2026")};
        QCOMPARE(Proveedores(), insertado);

        M().Limpiar();
        Tecla(Qt::Key_Return);
        QCOMPARE(w->txtCUIT->text(), QStringLiteral("  30-5 "));
        Teclas({"Gamma", Qt::Key_F11});
        QCOMPARE(QPair(M().mostrados.size(), w->Estado()), QPair(qsizetype(0), 2));
        QCOMPARE(Proveedores(), insertado);
    }

    void eliminar()
    {
        Abrir({QStringLiteral("30-1|Prov 1"), QStringLiteral("30-2|Prov 2"), QStringLiteral("30-3|Prov 3")});
        Tecla(Qt::Key_Up);
        M().Responder(vb::vbNo);
        Tecla(Qt::Key_Delete);
        QCOMPARE(Aviso(), Con(QStringLiteral("Confirma eliminar el Proveedor seleccionado con el CUIT 30-2"), vb::vbYesNo | vb::vbQuestion));
        QCOMPARE(libro->Contar(QStringLiteral("PRV")), 3L);

        Tecla(Qt::Key_Delete);
        QCOMPARE(M().mostrados.size(), 2);
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Prov 1"), QStringLiteral("30-3|Prov 3")}));

        // Removed by someone else since the grid was loaded: the delete finds nothing, and
        // neither does Enter.
        libro->Ejecutar(QStringLiteral("delete from PRV"));
        M().Limpiar();
        Tecla(Qt::Key_Delete);
        QCOMPARE(M().mostrados.size(), 2);
        QCOMPARE(Aviso(), Con(QStringLiteral("No se pudo eliminar el Proveedor seleccionado"), vb::vbExclamation));
        QCOMPARE(w->FilasGrilla(), 3);
        Tecla(Qt::Key_Return);
        QCOMPARE(Aviso(), Con(QStringLiteral("No se encontro la información para el proveedor seleccionado"), vb::vbExclamation));
        QCOMPARE(QString::number(w->Estado()) + w->txtCUIT->text(), QStringLiteral("2"));
    }

    // No value is escaped: an apostrophe fails the save with the error report, nothing changes.
    void apostrofe_data()
    {
        QTest::addColumn<bool>("modificar");
        QTest::addColumn<QString>("campo");
        QTest::newRow("alta, cuit") << false << QStringLiteral("txtCUIT");
        QTest::newRow("modificacion, nombre") << true << QStringLiteral("txtNombre");
    }
    void apostrofe()
    {
        QFETCH(bool, modificar);
        QFETCH(QString, campo);
        Abrir({QStringLiteral("30-1|Beta")});
        const QStringList antes = Proveedores();
        Tecla(modificar ? Qt::Key_Return : Qt::Key_Insert);
        if (!modificar)
            Teclas({"30-9", Qt::Key_Return, "Nuevo"});
        w->findChild<QLineEdit *>(campo)->setFocus();
        Teclas({Qt::Key_End, "O'Hara", Qt::Key_F11});

        QCOMPARE(M().mostrados.size(), 1);
        QVERIFY(Aviso().endsWith(Con(QStringLiteral("Seccion [frmLSTPROV.lpGuardar]"), vb::vbCritical)));
        QCOMPARE(w->Estado(), modificar ? 2 : 1);
        QCOMPARE(Proveedores(), antes);
    }

    // Insert while modifying keeps the supplier's data in the fields; Esc discards the entries
    // and goes back to browse; in browse it closes the window.
    void insertYEscape()
    {
        Abrir({QStringLiteral("30-1|Beta")});
        Teclas({Qt::Key_Return, Qt::Key_Insert});
        QCOMPARE(w->Estado(), 1);
        QCOMPARE(w->txtCUIT->text() + u'|' + w->txtNombre->text() + u'|' + w->txtContacto->text(),
                 QStringLiteral("30-1|Beta|Juan"));

        Tecla(Qt::Key_Escape);
        QCOMPARE(QString::number(w->Estado()) + w->txtCUIT->text() + w->txtNombre->text(), QStringLiteral("0"));
        QVERIFY(w->txtCUIT->isEnabled() && w->isVisible());
        QCOMPARE(QApplication::focusWidget(), w->cGRID);
        Tecla(Qt::Key_Escape);
        QVERIFY(!w->isVisible() && M().mostrados.isEmpty());
        QCOMPARE(libro->Contar(QStringLiteral("PRV")), 1L);
    }

    // F5 on the main window opens this window beside it, not modal; what it saves is what an
    // invoice window opened afterwards offers, both in the Spanish order.
    void f5AbreLaVentanaNoModal()
    {
        libro->Empresa(QStringLiteral("20-9"), QStringLiteral("Empresa"));
        libro->Periodo(QStringLiteral("20-9"), QStringLiteral("01/11/2026"));
        int cuit = 0;
        for (const char *n : {"Limpieza Cristalina", "Ñandú", "Lácteos La Cañada", "Oasis", "Nutria"})
            libro->Proveedor(QStringLiteral("30-%1").arg(++cuit), QString::fromUtf8(n));
        frmMAIN principal(libro->S());
        const auto abierta = [&principal]() -> frmLSTPROV * {
            const auto todas = principal.findChildren<frmLSTPROV *>();
            return todas.size() == 1 ? todas.first() : nullptr;
        };
        principal.show();
        Activar(&principal);

        QTest::keyClick(principal.Grd, Qt::Key_F5);
        frmLSTPROV *prov = abierta();
        QVERIFY(prov && prov->isVisible() && prov->isWindow());
        QCOMPARE(prov->windowModality(), Qt::NonModal);
        QTRY_COMPARE(QApplication::activeWindow(), prov);
        Teclas({Qt::Key_Insert, QStringLiteral("30-9"), Qt::Key_Return, QStringLiteral("Nz")});

        // The main window stays usable; F5 again brings the same window forward, as it was.
        Activar(&principal);
        Teclas({Qt::Key_F5});
        QCOMPARE(abierta(), prov);
        QTRY_COMPARE(QApplication::activeWindow(), prov);
        QCOMPARE(prov->txtNombre->text(), QStringLiteral("Nz"));
        Teclas({Qt::Key_F11});
        const QStringList orden = {"Lácteos La Cañada", "Limpieza Cristalina", "Nutria", "Nz", "Ñandú", "Oasis"};
        QStringList grilla, combo;
        for (int f = 0; f < prov->cGRID->rowCount(); ++f)
            grilla << prov->cGRID->item(f, 1)->text();
        Teclas({Qt::Key_Escape});
        QTRY_VERIFY(!abierta());

        frmADDConcepto factura(libro->S(), &principal);
        for (int i = 0; i < factura.cboProv->count(); ++i)
            combo << factura.cboProv->itemText(i);
        QCOMPARE(QList({grilla, combo}), QList({orden, orden}));
        QCOMPARE(factura.cboIdProv->itemText(3), QStringLiteral("30-9"));
    }
};

QTEST_MAIN(TstFrmLSTPROV)
#include "tst_frmlstprov.moc"
