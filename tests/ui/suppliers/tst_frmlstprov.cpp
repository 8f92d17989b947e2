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

// The supplier window on a real book, driven by key events on its shown, active widgets.
class TstFrmLSTPROV : public QObject
{
    Q_OBJECT
private slots:
    void init() { libro = std::make_unique<LibroDePrueba>(); }
    void cleanup() { w.reset(); libro.reset(); }
    void libroVacio();
    void agregarConElTeclado();
    void faltaCuitONombre_data();
    void faltaCuitONombre();
    void modificarRecortaLosValores();
    void cuitConBlancos();
    void insertMientrasModificaConservaLosDatos();
    void eliminar();
    void proveedorQueYaNoEsta();
    void apostrofe_data();
    void apostrofe();
    void escape();

private:
    void Abrir()
    {
        w = std::make_unique<frmLSTPROV>(libro->S());
        w->show();
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
    }
    // Keys and text on the widget that has the focus, as the keyboard delivers them.
    void Tecla(Qt::Key k) { QTest::keyClick(QApplication::focusWidget(), k); }
    void Escribir(const QString &t) { QTest::keyClicks(QApplication::focusWidget(), t); }
    QStringList Grilla() const
    {
        QStringList filas;
        for (int f = 0; f < w->cGRID->rowCount(); ++f)
            filas << w->cGRID->item(f, 0)->text() + u'|' + w->cGRID->item(f, 1)->text();
        return filas;
    }
    QStringList Proveedores() const
    {
        return libro->Filas(QStringLiteral("select '['||PRVSNRCUIT||']', '['||PRVSNOMBRE||']', PRVSDOMICI, PRVSTELFON, PRVSEMAIL, PRVSCONTAC, PRVFALTA from PRV order by PRVSNRCUIT"));
    }
    MensajesGuion &M() { return libro->Mensajes(); }

    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmLSTPROV> w;
};

void TstFrmLSTPROV::libroVacio()
{
    Abrir();
    QCOMPARE(w->FilasGrilla(), 1);
    QCOMPARE(w->cGRID->horizontalHeaderItem(0)->text(), QStringLiteral("CUIT"));
    QCOMPARE(w->cGRID->horizontalHeaderItem(1)->text(), QStringLiteral("NOMBRE"));
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(w->lbTeclas->text(), kExaminar);
    QVERIFY(!w->Frame1->isVisible());
    QCOMPARE(QApplication::focusWidget(), w->cGRID);
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Delete);
    Tecla(Qt::Key_F11);
    QCOMPARE(w->Estado(), 0);
    QVERIFY(!w->Frame1->isVisible());
    QVERIFY(M().mostrados.isEmpty());
}

void TstFrmLSTPROV::agregarConElTeclado()
{
    libro->Proveedor(QStringLiteral("30-2"), QStringLiteral("delta"));
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-2|delta")}));
    QCOMPARE(w->cGRID->currentRow(), 1);
    const QPoint esquina = w->pos();
    const int altoExaminar = w->height();

    Tecla(Qt::Key_Insert);
    QCOMPARE(w->Estado(), 1);
    QVERIFY(!w->cGRID->isEnabled());
    QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Agregar - [ESC] Cancelar"));
    QCOMPARE(QApplication::focusWidget(), w->txtCUIT);
    // The window grows downwards to show the frame, the key help below it; the corner stays.
    QVERIFY(w->height() >= altoExaminar + w->Frame1->height());
    QVERIFY(w->lbTeclas->geometry().top() > w->Frame1->geometry().bottom());
    QCOMPARE(w->pos(), esquina);

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
    QVERIFY(M().mostrados.first().titulo.isEmpty());
    QCOMPARE(Proveedores().at(2), QStringLiteral("[30-3]|[Charly]|Calle 1|555|c@c.com|Ana|21/11/2026"));
    // Back to browse: the grid reloaded in name order, the fields emptied, the size as before.
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-3|Charly"),
                                    QStringLiteral("30-2|delta")}));
    QCOMPARE(w->cGRID->currentRow(), 2);
    QCOMPARE(QApplication::focusWidget(), w->cGRID);
    QCOMPARE(w->lbTeclas->text(), kExaminar);
    QCOMPARE(w->height(), altoExaminar);
    QCOMPARE(w->pos(), esquina);
    for (QLineEdit *t : w->Frame1->findChildren<QLineEdit *>())
        QCOMPARE(t->text(), QString());
}

void TstFrmLSTPROV::faltaCuitONombre_data()
{
    QTest::addColumn<QString>("cuit");
    QTest::addColumn<QString>("nombre");
    QTest::newRow("nombre de blancos") << QStringLiteral("30-1") << QStringLiteral("   ");
    QTest::newRow("sin nombre") << QStringLiteral("30-1") << QString();
    QTest::newRow("cuit de blancos") << QStringLiteral("  ") << QStringLiteral("Acme");
}

void TstFrmLSTPROV::faltaCuitONombre()
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
    QCOMPARE(w->txtNombre->text(), nombre);
}

void TstFrmLSTPROV::modificarRecortaLosValores()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    libro->Proveedor(QStringLiteral("30-2"), QStringLiteral("Delta"));
    Abrir();
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
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(Proveedores().first(), QStringLiteral("[30-1]|[Epsilon]|Calle 2|4444-5555|p@x.com|Juan|01/01/2020"));
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-2|Delta"), QStringLiteral("30-1|Epsilon")}));
    QVERIFY(w->txtCUIT->isEnabled());
}

void TstFrmLSTPROV::cuitConBlancos()
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
    // The update looks the CUIT up trimmed: no row, no message, still modifying.
    QVERIFY(M().mostrados.isEmpty());
    QCOMPARE(w->Estado(), 2);
    QCOMPARE(Proveedores(), insertado);
}

void TstFrmLSTPROV::insertMientrasModificaConservaLosDatos()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Insert);
    QCOMPARE(w->Estado(), 1);
    QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Agregar - [ESC] Cancelar"));
    QCOMPARE(w->txtCUIT->text(), QStringLiteral("30-1"));
    QCOMPARE(w->txtNombre->text(), QStringLiteral("Beta"));
    QCOMPARE(w->txtContacto->text(), QStringLiteral("Juan"));
    QVERIFY(w->Frame1->isAncestorOf(QApplication::focusWidget()));
}

void TstFrmLSTPROV::eliminar()
{
    for (const char *c : {"30-1", "30-2", "30-3"})
        libro->Proveedor(QString::fromLatin1(c), QStringLiteral("Prov ") + QString::fromLatin1(c));
    Abrir();
    Tecla(Qt::Key_Up);
    M().Responder(vb::vbNo);
    Tecla(Qt::Key_Delete);
    QCOMPARE(M().Ultimo(), QStringLiteral("Confirma eliminar el Proveedor seleccionado con el CUIT 30-2"));
    QCOMPARE(M().UltimoEstilo(), int(vb::vbYesNo | vb::vbQuestion));
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 3L);

    Tecla(Qt::Key_Delete);
    QCOMPARE(M().mostrados.size(), 2);
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Prov 30-1"), QStringLiteral("30-3|Prov 30-3")}));
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 2L);

    // Removed by someone else since the grid was loaded: the delete finds nothing.
    libro->Ejecutar(QStringLiteral("delete from PRV"));
    M().Limpiar();
    Tecla(Qt::Key_Delete);
    QCOMPARE(M().mostrados.size(), 2);
    QCOMPARE(M().Ultimo(), QStringLiteral("No se pudo eliminar el Proveedor seleccionado"));
    QCOMPARE(M().UltimoEstilo(), int(vb::vbExclamation));
    QCOMPARE(w->FilasGrilla(), 3);
}

void TstFrmLSTPROV::proveedorQueYaNoEsta()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    libro->Ejecutar(QStringLiteral("delete from PRV"));
    Tecla(Qt::Key_Return);
    QCOMPARE(M().Ultimo(), QStringLiteral("No se encontro la información para el proveedor seleccionado"));
    QCOMPARE(M().UltimoEstilo(), int(vb::vbExclamation));
    QCOMPARE(w->Estado(), 2);
    QCOMPARE(w->txtCUIT->text(), QString());
    QVERIFY(w->txtCUIT->isEnabled());
}

void TstFrmLSTPROV::apostrofe_data()
{
    QTest::addColumn<bool>("modificar");
    QTest::addColumn<QString>("campo");
    QTest::newRow("alta, cuit") << false << QStringLiteral("txtCUIT");
    QTest::newRow("alta, contacto") << false << QStringLiteral("txtContacto");
    QTest::newRow("modificacion, nombre") << true << QStringLiteral("txtNombre");
    QTest::newRow("modificacion, mail") << true << QStringLiteral("txtMail");
}

void TstFrmLSTPROV::apostrofe()
{
    QFETCH(bool, modificar);
    QFETCH(QString, campo);
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    const QStringList antes = Proveedores();
    Tecla(modificar ? Qt::Key_Return : Qt::Key_Insert);
    if (!modificar) {
        Escribir(QStringLiteral("30-9"));
        Tecla(Qt::Key_Return);
        Escribir(QStringLiteral("Nuevo"));
    }
    QLineEdit *txt = w->findChild<QLineEdit *>(campo);
    txt->setFocus();
    Tecla(Qt::Key_End);
    Escribir(QStringLiteral("O'Hara"));
    Tecla(Qt::Key_F11);

    QCOMPARE(M().mostrados.size(), 1);
    QVERIFY(M().Ultimo().endsWith(QStringLiteral("Seccion [frmLSTPROV.lpGuardar]")));
    QCOMPARE(M().UltimoEstilo(), int(vb::vbCritical));
    QCOMPARE(w->Estado(), modificar ? 2 : 1);
    QCOMPARE(Proveedores(), antes);
}

void TstFrmLSTPROV::escape()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Escape);
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(w->txtNombre->text(), QString());
    QVERIFY(w->txtCUIT->isEnabled());
    QCOMPARE(QApplication::focusWidget(), w->cGRID);

    Tecla(Qt::Key_Insert);
    Escribir(QStringLiteral("30-2"));
    Tecla(Qt::Key_Escape);
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(w->txtCUIT->text(), QString());
    QVERIFY(w->isVisible());

    Tecla(Qt::Key_Escape);
    QVERIFY(!w->isVisible());
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 1L);
    QVERIFY(M().mostrados.isEmpty());
}

QTEST_MAIN(TstFrmLSTPROV)
#include "tst_frmlstprov.moc"
