// The supplier window on a real book, driven by key events on its shown, active widgets.

#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

namespace {
const QString kExaminar = QStringLiteral("[INS] Agregar - [ENTER] Modificar - [DEL] Eliminar");
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
        w->show();
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
    }
    // Keys and text on the widget that has the focus, as the keyboard delivers them.
    static void Tecla(Qt::Key k) { QTest::keyClick(QApplication::focusWidget(), k); }
    static void Escribir(const QString &t) { QTest::keyClicks(QApplication::focusWidget(), t); }
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
        QCOMPARE(w->lbTeclas->text(), kExaminar);
        QCOMPARE(QApplication::focusWidget(), w->cGRID);
        Tecla(Qt::Key_Return);
        Tecla(Qt::Key_Delete);
        Tecla(Qt::Key_F11);
        QCOMPARE(w->Estado(), 0);
        QVERIFY(!w->Frame1->isVisible());
        QVERIFY(M().mostrados.isEmpty());
    }

    void agregarConElTeclado()
    {
        Abrir({QStringLiteral("30-2|delta"), QStringLiteral("30-1|Beta")});
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-2|delta")}));
        QCOMPARE(w->cGRID->currentRow(), 1);

        Tecla(Qt::Key_Insert);
        QCOMPARE(w->Estado(), 1);
        QVERIFY(w->Frame1->isVisible());
        QVERIFY(!w->cGRID->isEnabled());
        QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Agregar - [ESC] Cancelar"));
        QCOMPARE(QApplication::focusWidget(), w->txtCUIT);
        for (const char *t : {"30-3", "Charly", "Calle 1", "555", "c@c.com"}) {
            Escribir(QString::fromLatin1(t));
            Tecla(Qt::Key_Return);
        }
        QCOMPARE(QApplication::focusWidget(), w->txtContacto);
        Escribir(QStringLiteral("Ana"));
        Tecla(Qt::Key_F11);

        QCOMPARE(M().mostrados.size(), 1);
        QCOMPARE(M().Ultimo(), kGuardado);
        QCOMPARE(M().UltimoEstilo(), int(vb::vbInformation));
        QCOMPARE(Proveedores().at(2), QStringLiteral("[30-3]|[Charly]|Calle 1|555|c@c.com|Ana|21/11/2026"));
        // Back to browse: the grid reloaded in name order, the fields emptied.
        QCOMPARE(w->Estado(), 0);
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-3|Charly"),
                                        QStringLiteral("30-2|delta")}));
        QCOMPARE(QApplication::focusWidget(), w->cGRID);
        QCOMPARE(w->lbTeclas->text(), kExaminar);
        for (QLineEdit *t : w->Frame1->findChildren<QLineEdit *>())
            QCOMPARE(t->text(), QString());
    }

    void faltaCuitONombre_data()
    {
        QTest::addColumn<QString>("cuit");
        QTest::addColumn<QString>("nombre");
        QTest::newRow("nombre de blancos") << QStringLiteral("30-1") << QStringLiteral("   ");
        QTest::newRow("sin nombre") << QStringLiteral("30-1") << QString();
        QTest::newRow("cuit de blancos") << QStringLiteral("  ") << QStringLiteral("Acme");
    }
    void faltaCuitONombre()
    {
        QFETCH(QString, cuit);
        QFETCH(QString, nombre);
        Abrir();
        Tecla(Qt::Key_Insert);
        Escribir(cuit);
        Tecla(Qt::Key_Return);
        Escribir(nombre);
        Tecla(Qt::Key_F11);
        QCOMPARE(M().Ultimo(), QStringLiteral("Debe ingresar como mínimo CUIT y NOMBRE."));
        QCOMPARE(M().UltimoEstilo(), int(vb::vbInformation));
        QCOMPARE(libro->Contar(QStringLiteral("PRV")), 0L);
        QCOMPARE(w->Estado(), 1);
    }

    // The update trims every value; the CUIT cannot be changed.
    void modificarRecortaLosValores()
    {
        Abrir({QStringLiteral("30-1|Beta"), QStringLiteral("30-2|Delta")});
        Tecla(Qt::Key_Up);
        Tecla(Qt::Key_Return);
        QCOMPARE(w->Estado(), 2);
        QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Grabar - [ESC] Cancelar"));
        QStringList datos;
        for (QLineEdit *t : {w->txtCUIT, w->txtNombre, w->txtDomicilio, w->txtTelefono, w->txtMail, w->txtContacto})
            datos << t->text();
        QCOMPARE(datos.join(u'|'), QStringLiteral("30-1|Beta|Av. Siempreviva 742|4444-5555|p@x.com|Juan"));
        QVERIFY(!w->txtCUIT->isEnabled());
        // The name has the focus, its text selected: typing replaces it.
        QCOMPARE(QApplication::focusWidget(), w->txtNombre);
        Escribir(QStringLiteral("  Epsilon  "));
        Tecla(Qt::Key_Down);
        Escribir(QStringLiteral(" Calle 2 "));
        Tecla(Qt::Key_F11);

        QCOMPARE(M().Ultimo(), kGuardado);
        QCOMPARE(Proveedores().first(), QStringLiteral("[30-1]|[Epsilon]|Calle 2|4444-5555|p@x.com|Juan|01/01/2020"));
        QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-2|Delta"), QStringLiteral("30-1|Epsilon")}));
        QVERIFY(w->txtCUIT->isEnabled());
    }

    // Inserted with its blanks, looked up trimmed on update: no row, no message, still modifying.
    void cuitConBlancos()
    {
        Abrir();
        Tecla(Qt::Key_Insert);
        Escribir(QStringLiteral("  30-5 "));
        Tecla(Qt::Key_Return);
        Escribir(QStringLiteral(" Beta "));
        Tecla(Qt::Key_F11);
        const QStringList insertado{QStringLiteral("[  30-5 ]|[ Beta ]|||||21/11/2026")};
        QCOMPARE(Proveedores(), insertado);

        Tecla(Qt::Key_Return);
        QCOMPARE(w->txtCUIT->text(), QStringLiteral("  30-5 "));
        Escribir(QStringLiteral("Gamma"));
        M().Limpiar();
        Tecla(Qt::Key_F11);
        QVERIFY(M().mostrados.isEmpty());
        QCOMPARE(w->Estado(), 2);
        QCOMPARE(Proveedores(), insertado);
    }

    void insertMientrasModificaConservaLosDatos()
    {
        Abrir({QStringLiteral("30-1|Beta")});
        Tecla(Qt::Key_Return);
        Tecla(Qt::Key_Insert);
        QCOMPARE(w->Estado(), 1);
        QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Agregar - [ESC] Cancelar"));
        QCOMPARE(w->txtCUIT->text() + u'|' + w->txtNombre->text() + u'|' + w->txtContacto->text(),
                 QStringLiteral("30-1|Beta|Juan"));
    }

    void eliminar()
    {
        Abrir({QStringLiteral("30-1|Prov 1"), QStringLiteral("30-2|Prov 2"), QStringLiteral("30-3|Prov 3")});
        Tecla(Qt::Key_Up);
        M().Responder(vb::vbNo);
        Tecla(Qt::Key_Delete);
        QCOMPARE(M().Ultimo(), QStringLiteral("Confirma eliminar el Proveedor seleccionado con el CUIT 30-2"));
        QCOMPARE(M().UltimoEstilo(), int(vb::vbYesNo | vb::vbQuestion));
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
        QCOMPARE(M().Ultimo(), QStringLiteral("No se pudo eliminar el Proveedor seleccionado"));
        QCOMPARE(M().UltimoEstilo(), int(vb::vbExclamation));
        QCOMPARE(w->FilasGrilla(), 3);
        Tecla(Qt::Key_Return);
        QCOMPARE(M().Ultimo(), QStringLiteral("No se encontro la información para el proveedor seleccionado"));
        QCOMPARE(M().UltimoEstilo(), int(vb::vbExclamation));
        QCOMPARE(w->Estado(), 2);
        QCOMPARE(w->txtCUIT->text(), QString());
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
        if (!modificar) {
            Escribir(QStringLiteral("30-9"));
            Tecla(Qt::Key_Return);
            Escribir(QStringLiteral("Nuevo"));
        }
        w->findChild<QLineEdit *>(campo)->setFocus();
        Tecla(Qt::Key_End);
        Escribir(QStringLiteral("O'Hara"));
        Tecla(Qt::Key_F11);

        QCOMPARE(M().mostrados.size(), 1);
        QVERIFY(M().Ultimo().endsWith(QStringLiteral("Seccion [frmLSTPROV.lpGuardar]")));
        QCOMPARE(M().UltimoEstilo(), int(vb::vbCritical));
        QCOMPARE(w->Estado(), modificar ? 2 : 1);
        QCOMPARE(Proveedores(), antes);
    }

    // Esc discards the entries and goes back to browse; in browse it closes the window.
    void escape()
    {
        Abrir({QStringLiteral("30-1|Beta")});
        Tecla(Qt::Key_Return);
        Tecla(Qt::Key_Escape);
        QCOMPARE(w->Estado(), 0);
        QCOMPARE(w->txtNombre->text(), QString());
        QVERIFY(w->txtCUIT->isEnabled());
        QCOMPARE(QApplication::focusWidget(), w->cGRID);

        Tecla(Qt::Key_Insert);
        Escribir(QStringLiteral("30-2"));
        Tecla(Qt::Key_Escape);
        QCOMPARE(w->txtCUIT->text(), QString());
        QVERIFY(w->isVisible());
        Tecla(Qt::Key_Escape);
        QVERIFY(!w->isVisible());
        QCOMPARE(libro->Contar(QStringLiteral("PRV")), 1L);
        QVERIFY(M().mostrados.isEmpty());
    }
};

QTEST_MAIN(TstFrmLSTPROV)
#include "tst_frmlstprov.moc"
