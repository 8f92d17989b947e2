#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

// The supplier window on a real book, driven by key events on its shown, active widgets.
class TstFrmLSTPROV : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void libroVacio();
    void grillaEnOrdenDeNombre();
    void agregarConElTeclado();
    void faltaCuitONombre_data();
    void faltaCuitONombre();
    void cuitConBlancos();
    void modificarRecortaLosValores();
    void insertMientrasModificaConservaLosDatos();
    void eliminarPregunta();
    void eliminarFallido();
    void proveedorQueYaNoEsta();
    void apostrofe_data();
    void apostrofe();
    void escape();

private:
    void Abrir();
    // A key on the widget that has the focus, as the keyboard delivers it.
    void Tecla(Qt::Key k) { QTest::keyClick(QApplication::focusWidget(), k); }
    void Escribir(const QString &texto) { QTest::keyClicks(QApplication::focusWidget(), texto); }
    QStringList Grilla() const;
    QStringList Proveedores() const
    {
        return libro->Filas(QStringLiteral("select '['||PRVSNRCUIT||']', '['||PRVSNOMBRE||']', PRVSDOMICI, PRVSTELFON, PRVSEMAIL, PRVSCONTAC, PRVFALTA from PRV order by PRVSNRCUIT"));
    }

    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmLSTPROV> w;
};

void TstFrmLSTPROV::init() { libro = std::make_unique<LibroDePrueba>(); }

void TstFrmLSTPROV::cleanup()
{
    w.reset();
    libro.reset();
}

void TstFrmLSTPROV::Abrir()
{
    w = std::make_unique<frmLSTPROV>(libro->S());
    w->show();
    w->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(w.get()));
}

QStringList TstFrmLSTPROV::Grilla() const
{
    QStringList filas;
    for (int f = 0; f < w->cGRID->rowCount(); ++f)
        filas << w->cGRID->item(f, 0)->text() + u'|' + w->cGRID->item(f, 1)->text();
    return filas;
}

void TstFrmLSTPROV::libroVacio()
{
    Abrir();
    QCOMPARE(w->FilasGrilla(), 1);
    QCOMPARE(w->cGRID->horizontalHeaderItem(0)->text(), QStringLiteral("CUIT"));
    QCOMPARE(w->cGRID->horizontalHeaderItem(1)->text(), QStringLiteral("NOMBRE"));
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(w->lbTeclas->text(), QStringLiteral("[INS] Agregar - [ENTER] Modificar - [DEL] Eliminar"));
    QVERIFY(!w->Frame1->isVisible());
    QCOMPARE(QApplication::focusWidget(), w->cGRID);

    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Delete);
    Tecla(Qt::Key_F11);
    QCOMPARE(w->Estado(), 0);
    QVERIFY(!w->Frame1->isVisible());
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
}

void TstFrmLSTPROV::grillaEnOrdenDeNombre()
{
    libro->Proveedor(QStringLiteral("30-3"), QStringLiteral("Zeta"));
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("acme"));
    libro->Proveedor(QStringLiteral("30-2"), QStringLiteral("Mostaza"));
    Abrir();
    QCOMPARE(w->FilasGrilla(), 4);
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|acme"), QStringLiteral("30-2|Mostaza"),
                                    QStringLiteral("30-3|Zeta")}));
    // The last row is the current one: Enter opens it.
    QCOMPARE(w->cGRID->currentRow(), 2);
    Tecla(Qt::Key_Up);
    Tecla(Qt::Key_Return);
    QCOMPARE(w->Estado(), 2);
    QCOMPARE(w->txtCUIT->text(), QStringLiteral("30-2"));
    QCOMPARE(w->txtNombre->text(), QStringLiteral("Mostaza"));
    QCOMPARE(w->txtDomicilio->text(), QStringLiteral("Av. Siempreviva 742"));
    QCOMPARE(w->txtTelefono->text(), QStringLiteral("4444-5555"));
    QCOMPARE(w->txtMail->text(), QStringLiteral("p@x.com"));
    QCOMPARE(w->txtContacto->text(), QStringLiteral("Juan"));
    QVERIFY(!w->txtCUIT->isEnabled());
    QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Grabar - [ESC] Cancelar"));
}

void TstFrmLSTPROV::agregarConElTeclado()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    libro->Proveedor(QStringLiteral("30-2"), QStringLiteral("Delta"));
    Abrir();
    const QPoint esquina = w->pos();
    const int altoExaminar = w->height();

    Tecla(Qt::Key_Insert);
    QCOMPARE(w->Estado(), 1);
    QVERIFY(w->Frame1->isVisible());
    QVERIFY(!w->cGRID->isEnabled());
    QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Agregar - [ESC] Cancelar"));
    QCOMPARE(QApplication::focusWidget(), w->txtCUIT);
    // The window grows downwards to show the frame; its corner stays where it was.
    QVERIFY(w->height() >= altoExaminar + w->Frame1->height());
    QCOMPARE(w->pos(), esquina);
    QVERIFY(w->lbTeclas->geometry().top() > w->Frame1->geometry().bottom());

    Escribir(QStringLiteral("30-3"));
    Tecla(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), w->txtNombre);
    Escribir(QStringLiteral("Charly"));
    Tecla(Qt::Key_Return);
    Escribir(QStringLiteral("Calle 1"));
    Tecla(Qt::Key_Return);
    Escribir(QStringLiteral("555"));
    Tecla(Qt::Key_Return);
    Escribir(QStringLiteral("c@c.com"));
    Tecla(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), w->txtContacto);
    Escribir(QStringLiteral("Ana"));
    Tecla(Qt::Key_F11);

    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("Datos guardatos correctamente."));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbInformation));
    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QVERIFY(libro->Mensajes().mostrados.first().titulo.isEmpty());
    QCOMPARE(libro->Filas(QStringLiteral("select PRVSNRCUIT, PRVSNOMBRE, PRVSDOMICI, PRVSTELFON, PRVSEMAIL, PRVSCONTAC, PRVFALTA from PRV where PRVSNRCUIT = '30-3'")),
             QStringList{QStringLiteral("30-3|Charly|Calle 1|555|c@c.com|Ana|21/11/2026")});
    // Back to browse, the grid reloaded in name order, the fields emptied.
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-3|Charly"),
                                    QStringLiteral("30-2|Delta")}));
    QCOMPARE(w->cGRID->currentRow(), 2);
    QVERIFY(!w->Frame1->isVisible());
    QCOMPARE(w->height(), altoExaminar);
    QCOMPARE(w->pos(), esquina);
    QCOMPARE(QApplication::focusWidget(), w->cGRID);
    for (QLineEdit *t : {w->txtCUIT, w->txtNombre, w->txtDomicilio, w->txtTelefono, w->txtMail, w->txtContacto})
        QCOMPARE(t->text(), QString());
}

void TstFrmLSTPROV::faltaCuitONombre_data()
{
    QTest::addColumn<QString>("cuit");
    QTest::addColumn<QString>("nombre");
    QTest::newRow("nombre de blancos") << QStringLiteral("30-1") << QStringLiteral("   ");
    QTest::newRow("sin nombre") << QStringLiteral("30-1") << QString();
    QTest::newRow("cuit de blancos") << QStringLiteral("  ") << QStringLiteral("Acme");
    QTest::newRow("nada") << QString() << QString();
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
    Tecla(Qt::Key_Return);
    Escribir(QStringLiteral("Calle 1"));
    Tecla(Qt::Key_F11);

    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("Debe ingresar como mínimo CUIT y NOMBRE."));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbInformation));
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 0L);
    QCOMPARE(w->Estado(), 1);
    QCOMPARE(w->txtDomicilio->text(), QStringLiteral("Calle 1"));
}

void TstFrmLSTPROV::cuitConBlancos()
{
    Abrir();
    Tecla(Qt::Key_Insert);
    Escribir(QStringLiteral("  30-5 "));
    Tecla(Qt::Key_Return);
    Escribir(QStringLiteral(" Beta "));
    Tecla(Qt::Key_F11);
    // Inserted as typed, blanks included.
    QCOMPARE(Proveedores(), QStringList{QStringLiteral("[  30-5 ]|[ Beta ]|||||21/11/2026")});
    QCOMPARE(Grilla(), QStringList{QStringLiteral("  30-5 | Beta ")});

    Tecla(Qt::Key_Return);
    QCOMPARE(w->Estado(), 2);
    QCOMPARE(w->txtCUIT->text(), QStringLiteral("  30-5 "));
    QCOMPARE(QApplication::focusWidget(), w->txtNombre);
    Escribir(QStringLiteral("Gamma"));
    libro->Mensajes().Limpiar();
    Tecla(Qt::Key_F11);
    // The update looks the CUIT up trimmed: no row, no message, still modifying.
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
    QCOMPARE(w->Estado(), 2);
    QCOMPARE(Proveedores(), QStringList{QStringLiteral("[  30-5 ]|[ Beta ]|||||21/11/2026")});
}

void TstFrmLSTPROV::modificarRecortaLosValores()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    libro->Proveedor(QStringLiteral("30-2"), QStringLiteral("Delta"));
    Abrir();
    Tecla(Qt::Key_Up);
    Tecla(Qt::Key_Return);
    QCOMPARE(w->txtCUIT->text(), QStringLiteral("30-1"));
    QCOMPARE(QApplication::focusWidget(), w->txtNombre);
    // The focused field has its text selected: typing replaces it.
    Escribir(QStringLiteral("  Epsilon  "));
    Tecla(Qt::Key_Down);
    Escribir(QStringLiteral(" Calle 2 "));
    Tecla(Qt::Key_F11);

    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("Datos guardatos correctamente."));
    QCOMPARE(w->Estado(), 0);
    QCOMPARE(Proveedores(), (QStringList{QStringLiteral("[30-1]|[Epsilon]|Calle 2|4444-5555|p@x.com|Juan|01/01/2020"),
                                         QStringLiteral("[30-2]|[Delta]|Av. Siempreviva 742|4444-5555|p@x.com|Juan|01/01/2020")}));
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-2|Delta"), QStringLiteral("30-1|Epsilon")}));
    QVERIFY(w->txtCUIT->isEnabled());
}

void TstFrmLSTPROV::insertMientrasModificaConservaLosDatos()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    Tecla(Qt::Key_Return);
    QCOMPARE(w->Estado(), 2);
    Tecla(Qt::Key_Insert);
    QCOMPARE(w->Estado(), 1);
    QCOMPARE(w->lbTeclas->text(), QStringLiteral("[F11] Agregar - [ESC] Cancelar"));
    QCOMPARE(w->txtCUIT->text(), QStringLiteral("30-1"));
    QCOMPARE(w->txtNombre->text(), QStringLiteral("Beta"));
    QCOMPARE(w->txtContacto->text(), QStringLiteral("Juan"));
    QVERIFY(!w->txtCUIT->isEnabled());
    QVERIFY(w->Frame1->isVisible());
    QVERIFY(w->Frame1->isAncestorOf(QApplication::focusWidget()));
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
}

void TstFrmLSTPROV::eliminarPregunta()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    libro->Proveedor(QStringLiteral("30-2"), QStringLiteral("Delta"));
    libro->Proveedor(QStringLiteral("30-3"), QStringLiteral("Gamma"));
    Abrir();
    Tecla(Qt::Key_Up);
    libro->Mensajes().Responder(vb::vbNo);
    Tecla(Qt::Key_Delete);
    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("Confirma eliminar el Proveedor seleccionado con el CUIT 30-2"));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbYesNo | vb::vbQuestion));
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 3L);
    QCOMPARE(w->FilasGrilla(), 4);

    libro->Mensajes().Limpiar();
    Tecla(Qt::Key_Delete);
    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QCOMPARE(libro->Filas(QStringLiteral("select PRVSNRCUIT from PRV order by 1")),
             (QStringList{QStringLiteral("30-1"), QStringLiteral("30-3")}));
    QCOMPARE(Grilla(), (QStringList{QStringLiteral("30-1|Beta"), QStringLiteral("30-3|Gamma")}));
    QCOMPARE(w->Estado(), 0);
}

void TstFrmLSTPROV::eliminarFallido()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    // Someone else removed it since the grid was loaded.
    libro->Ejecutar(QStringLiteral("delete from PRV"));
    Tecla(Qt::Key_Delete);
    QCOMPARE(libro->Mensajes().mostrados.size(), 2);
    QCOMPARE(libro->Mensajes().mostrados.first().texto,
             QStringLiteral("Confirma eliminar el Proveedor seleccionado con el CUIT 30-1"));
    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("No se pudo eliminar el Proveedor seleccionado"));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbExclamation));
    QCOMPARE(w->FilasGrilla(), 2);
}

void TstFrmLSTPROV::proveedorQueYaNoEsta()
{
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    libro->Ejecutar(QStringLiteral("delete from PRV"));
    Tecla(Qt::Key_Return);
    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("No se encontro la información para el proveedor seleccionado"));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbExclamation));
    QCOMPARE(w->Estado(), 2);
    QCOMPARE(w->txtCUIT->text(), QString());
    QVERIFY(w->txtCUIT->isEnabled());
}

void TstFrmLSTPROV::apostrofe_data()
{
    QTest::addColumn<bool>("modificar");
    QTest::addColumn<int>("campo");
    QTest::newRow("alta, cuit") << false << 0;
    QTest::newRow("alta, nombre") << false << 1;
    QTest::newRow("alta, contacto") << false << 5;
    QTest::newRow("modificacion, nombre") << true << 1;
    QTest::newRow("modificacion, mail") << true << 4;
}

void TstFrmLSTPROV::apostrofe()
{
    QFETCH(bool, modificar);
    QFETCH(int, campo);
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    Abrir();
    const QStringList antes = Proveedores();
    Tecla(modificar ? Qt::Key_Return : Qt::Key_Insert);
    if (!modificar) {
        Escribir(QStringLiteral("30-9"));
        Tecla(Qt::Key_Return);
        Escribir(QStringLiteral("Nuevo"));
    }
    QLineEdit *campos[] = {w->txtCUIT, w->txtNombre, w->txtDomicilio, w->txtTelefono, w->txtMail, w->txtContacto};
    campos[campo]->setFocus();
    QTest::keyClick(campos[campo], Qt::Key_End);
    Escribir(QStringLiteral("O'Hara"));
    QVERIFY(campos[campo]->text().endsWith(QStringLiteral("O'Hara")));
    Tecla(Qt::Key_F11);

    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QVERIFY(libro->Mensajes().Ultimo().endsWith(QStringLiteral("Seccion [frmLSTPROV.lpGuardar]")));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
    QCOMPARE(w->Estado(), modificar ? 2 : 1);
    QCOMPARE(Proveedores(), antes);
    QCOMPARE(w->FilasGrilla(), 2);
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
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 1L);
    QVERIFY(w->isVisible());

    Tecla(Qt::Key_Escape);
    QVERIFY(!w->isVisible());
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
}

QTEST_MAIN(TstFrmLSTPROV)
#include "tst_frmlstprov.moc"
