// The add-invoice window driven from the keyboard over a real book: the header save and its
// checks, the taxed amounts, the VAT lines and the totals, and the hand-off to supplier
// tracking (a posting that fails is reported and loses nothing).

#include "LibroFacturas.h"
#include "data/Convenciones.h"
#include "data/SegProveedores.h"

#include <QCheckBox>

class TstFrmADDConcepto : public QObject, Facturas
{
    Q_OBJECT

    void Encabezado(frmADDConcepto &w, const QString &numero, const QString &noGravado)
    {
        Campo(w.TxtNumero, numero);
        Campo(w.TxtNoGrav, noGravado);
    }
    // The postings recorded for the company in the book's supplier-tracking file, as
    // "company>supplier|date|number|description|side|amount".
    QStringList Publicadas() const
    {
        SegProveedoresServices::clMAinSP sp;
        sp.setsp_pcuituser(kEmpresa);
        sp.setPathDB(libro->Carpeta() + QStringLiteral("proveedores.mdb"));
        QStringList out;
        for (const auto &i : sp.Imputaciones())
            out << QStringList{i.empresa + u'>' + i.proveedor, i.fecha.toString(u"dd/MM/yyyy"), i.numero, i.descripcion, i.lado,
                               conv::NumeroATexto(i.importe)}.join(u'|');
        return out;
    }
    static void Tildar(frmADDConcepto &w)
    {
        w.Chk_EnviarASeguimiento->setFocus();
        Tecla(Qt::Key_Space);
    }
    // Beta's invoice "0001-00000042" of type "B" dated 15/11/2026: untaxed 5, taxed 100 and a
    // VAT line of 21 (which writes the header).
    static void Factura(frmADDConcepto &w)
    {
        w.cboProv->setFocus();
        Tecla(Qt::Key_Down);
        Campo(w.TxtFecha, QStringLiteral("15/11/2026"));
        w.cboTipo->setFocus();
        Tecla(Qt::Key_Down);
        Campo(w.TxtNumero, QStringLiteral("0001-00000042"));
        Campo(w.TxtNoGrav, QStringLiteral("5"));
        Gravado(w, QStringLiteral("100"));
        LineaIVA(w, QStringLiteral("21"), QStringLiteral("21"));
    }

private slots:
    void encabezadoRechazado_data()
    {
        QTest::addColumn<bool>("proveedores");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("noGravado");
        QTest::addColumn<QString>("mensaje"); // empty: the statement fails without a word
        QTest::newRow("sin proveedores") << false << "1" << "0" << "Debe seleccionar un Proveedor";
        QTest::newRow("número en blanco") << true << "   " << "0" << "Debe ingresar un número de factura";
        QTest::newRow("no gravado vacío") << true << "1" << "" << "El Valor No Gravado debe ser númerico";
        QTest::newRow("apóstrofo en el número") << true << "0001'2" << "0" << "";
    }
    void encabezadoRechazado()
    {
        QFETCH(bool, proveedores);
        QFETCH(QString, numero);
        QFETCH(QString, noGravado);
        QFETCH(QString, mensaje);
        Libro(proveedores);
        auto w = Agregar();
        Campo(w->TxtNumero, numero);
        if (!noGravado.isEmpty())
            Campo(w->TxtNoGrav, noGravado);
        Guardar(*w);
        QCOMPARE(Msg().mostrados.size(), mensaje.isEmpty() ? 0 : 1);
        if (!mensaje.isEmpty())
            QCOMPARE(Aviso(), Con(mensaje, vb::vbExclamation));
        QCOMPARE(Contar(QStringLiteral("IVC")), 0L);
        // "Guardar" reloads whatever the save did.
        QCOMPARE(QPair(w->Guardado(), principal.recargas), QPair(false, 1));
    }

    // What is not a number in "No Gravado" becomes 0 as it is typed, and the total follows it;
    // "Gravado" is checked by the saves that update only.
    void gravadoSoloSeExigeAlActualizar()
    {
        Libro();
        auto w = Agregar();
        Encabezado(*w, QStringLiteral("0001-1"), QStringLiteral("abc"));
        QCOMPARE(w->TxtNoGrav->text(), QStringLiteral("0"));
        Reescribir(QStringLiteral("15,5"));
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("15,50"));
        Campo(w->txtDescripcion, QStringLiteral("D'Angelo"));
        Campo(w->TxtGrav, QStringLiteral("x1"));
        Guardar(*w);
        QVERIFY(Msg().mostrados.isEmpty());
        QVERIFY(w->Guardado());
        // The description keeps its apostrophe as "´", on screen and in the book.
        QCOMPARE(Filas(QStringLiteral("select DESCRIPCION from IVC")) << w->txtDescripcion->text(), QStringList(2, QStringLiteral("D´Angelo")));
        Guardar(*w);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("El Valor Gravado debe ser númerico"));

        // Changing the number after the insert updates the row found by the old number.
        Campo(w->TxtGrav, QStringLiteral("1"));
        Campo(w->TxtNumero, QStringLiteral("0001-2"));
        Guardar(*w);
        QCOMPARE(Filas(QStringLiteral("select IVCSNROFAC from IVC")), QStringList{QStringLiteral("0001-2")});
        QCOMPARE(Msg().mostrados.size(), 1);
    }

    // The duplicate check refuses the header, and the invoice on screen is posted all the same;
    // the same number of another supplier is no duplicate.
    void duplicadoEnOtroPeriodo()
    {
        Libro();
        libro->Factura(kEmpresa, kAcme, QStringLiteral("01/10/2026"), QStringLiteral("05/10/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-7"), 10, 0, 0, 0);
        auto w = Agregar();
        Tildar(*w);
        Encabezado(*w, QStringLiteral("0001-7"), QStringLiteral("12,5"));
        Guardar(*w);
        QCOMPARE(Aviso(), Con(QStringLiteral("Este Numero de factura ya fue cargada [ 0001-7 ]\r\nEL DIA 01/11/2026\r\n"
                                             "FECHA DE FACTURA 05/10/2026\r\nEL PERIODO 10/2026"), vb::vbExclamation));
        QCOMPARE(QPair(w->Guardado(), Contar(QStringLiteral("IVC"))), QPair(false, 1L));
        QCOMPARE(Publicadas(), QStringList{QStringLiteral("20111111112>30700000011|21/11/2026|0001-7|Factura A|DEBE|12,5")});
        w->cboProv->setFocus();
        Tecla(Qt::Key_Down);
        Guardar(*w);
        QCOMPARE(Contar(QStringLiteral("IVC")), 2L);
    }

    void montosGravados_data()
    {
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("monto");
        QTest::addColumn<QString>("mensaje");
        QTest::addColumn<QString>("lista");
        QTest::newRow("sin número") << "" << "10" << "Primero debe ingresar número de factura" << "";
        QTest::newRow("texto") << "1" << "diez" << "Debe ingresar un valor númerico." << "";
        QTest::newRow("cero") << "1" << "0" << "Debe ingresar un valor mayor a cero" << "";
        QTest::newRow("negativo") << "1" << "-5" << "" << "-05,00";
        QTest::newRow("decimal con punto") << "1" << "12.5" << "" << "12,50";
    }
    void montosGravados()
    {
        QFETCH(QString, numero);
        QFETCH(QString, monto);
        QFETCH(QString, mensaje);
        QFETCH(QString, lista);
        Libro();
        auto w = Agregar();
        Campo(w->TxtNumero, numero);
        Gravado(*w, monto);
        QCOMPARE(Msg().Ultimo(), mensaje);
        QCOMPARE(Contar(QStringLiteral("IVC_Gravado")), lista.isEmpty() ? 0L : 1L);
        QCOMPARE(w->lstGravado->count(), lista.isEmpty() ? 0 : 1);
        if (!lista.isEmpty())
            QCOMPARE(w->lstGravado->item(0)->text() + u'|' + w->lbTotalFactura->text(), lista + u'|' + lista);
    }

    void eliminarGravado()
    {
        Libro();
        auto w = Agregar();
        Campo(w->TxtNumero, QStringLiteral("1"));
        Gravado(*w, QStringLiteral("100"));
        Gravado(*w, QStringLiteral("200"));
        w->lstGravado->setFocus();
        w->lstGravado->setCurrentRow(-1);
        Tecla(Qt::Key_Delete);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("Debe seleccionar un valor Gravado"));

        Tecla(Qt::Key_Home);
        Borrar(w->lstGravado, Msg(), vb::vbNo);
        QCOMPARE(Aviso(), Con(QStringLiteral("Confirma eliminar el Gravado 100,00"), vb::vbYesNo + vb::vbQuestion));
        QCOMPARE(w->lstGravado->count(), 2);

        Borrar(w->lstGravado, Msg());
        QCOMPARE(Filas(QStringLiteral("select GRAVAD_id,GRAVAD_Valor from IVC_Gravado")), QStringList{QStringLiteral("2|200")});
        QCOMPARE(w->cboGravadoIVA->itemText(0) + w->lbGravTotal->text(), QStringLiteral("200,00200,00"));
        QVERIFY(w->TxtNumero->isReadOnly());

        // The last amount gone: the number is free again.
        w->lstGravado->setCurrentRow(0);
        Borrar(w->lstGravado, Msg());
        QVERIFY(!w->TxtNumero->isReadOnly());
    }

    void lineasIVA()
    {
        Libro();
        libro->LineaIVA(kEmpresa, kAcme, QStringLiteral("0001-9"), 7, 21, QStringLiteral("otra factura"), 1);
        auto w = Agregar();
        Encabezado(*w, QStringLiteral("0001-1"), QStringLiteral("0"));
        // The two refusals differ in their icon only.
        const QString noNumero = QStringLiteral("Debe ingresar un valor númerico");
        LineaIVA(*w, QStringLiteral("x"), QStringLiteral("1"));
        QCOMPARE(Aviso(), Con(noNumero, vb::vbCritical));
        LineaIVA(*w, QStringLiteral("21"), QStringLiteral("x"));
        QCOMPARE(Aviso(), Con(noNumero, vb::vbOKOnly));
        QCOMPARE(Contar(QStringLiteral("IVC")), 0L);

        LineaIVA(*w, QStringLiteral("10.5"), QStringLiteral("10,50"));
        QCOMPARE(Contar(QStringLiteral("IVC")), 1L);
        // From now on the header save updates, and so checks "Gravado": refused, no line.
        Campo(w->txtIVCDETDSC, QStringLiteral("it's"));
        LineaIVA(*w, QStringLiteral("27"), QStringLiteral("27"));
        QCOMPARE(Msg().Ultimo(), QStringLiteral("El Valor Gravado debe ser númerico"));
        QCOMPARE(Contar(QStringLiteral("IVC_DetIVA")), 2L);
        Campo(w->TxtGrav, QStringLiteral("0"));
        w->txtIVCDETVLR->setFocus();
        Tecla(Qt::Key_Return);
        // Ids grow over every invoice of the supplier; the description defaults from the rate box.
        QCOMPARE(Filas(QStringLiteral("select IVCdetId,IVCDETIVA,IVCDETDSC,IVCDETVLR from IVC_DetIVA "
                                      "where IVCSNROFAC = '0001-1' order by IVCdetId")),
                 (QStringList{QStringLiteral("8|10,5|Iva del 10.5:|10,5"), QStringLiteral("9|27|it s|27")}));
        QCOMPARE(Filas(QStringLiteral("select IVARIN from IVC")), QStringList{QStringLiteral("37,5")});

        w->lstIVC_DetIVA->setCurrentItem(w->lstIVC_DetIVA->topLevelItem(1));
        Borrar(w->lstIVC_DetIVA, Msg());
        QCOMPARE(Msg().Ultimo(), QStringLiteral("Confirma eliminar el concepto seleccinado?"));
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("10,50"));
        Borrar(w->lstIVC_DetIVA, Msg());
        // The last line gone: the supplier is free again; this window leaves IVARIN as it was.
        QVERIFY(w->cboProv->isEnabled());
        QCOMPARE(w->lbIVATotal->text() + Filas(QStringLiteral("select IVARIN from IVC")).join(u'/'),
                 QStringLiteral("00,0010,5"));
        QCOMPARE(Contar(QStringLiteral("IVC_DetIVA")), 1L);
    }

    // Esc empties the VAT line boxes; the window stays, whatever has the focus.
    void escNuncaCierra()
    {
        Libro();
        auto w = Agregar();
        Campo(w->txtIVCDETIVA, QStringLiteral("21"));
        Campo(w->txtIVCDETDSC, QStringLiteral("algo"));
        Tecla(Qt::Key_Escape);
        QCOMPARE(w->txtIVCDETIVA->text() + w->txtIVCDETDSC->text(), QString());
        QCOMPARE(Foco(), w->lstIVC_DetIVA);
        w->cboProv->setFocus();
        Teclas({Qt::Key_Escape, Qt::Key_Escape});
        QVERIFY(w->isVisible() && Msg().mostrados.isEmpty());
    }

    // Closing without a header save: the taxed amounts go, VAT lines stay. The header insert
    // here writes no row (the book ignores it), which keeps the window in insert mode.
    void cerrarSinGuardar()
    {
        Libro();
        auto w = Agregar();
        libro->Ejecutar(QStringLiteral("CREATE TRIGGER ignorar BEFORE INSERT ON IVC BEGIN SELECT RAISE(IGNORE); END"));
        Encabezado(*w, QStringLiteral("0001-1"), QStringLiteral("0"));
        Gravado(*w, QStringLiteral("100"));
        LineaIVA(*w, QStringLiteral("21"), QStringLiteral("21"));
        QVERIFY(!w->Guardado());
        QCOMPARE(Contar(QStringLiteral("IVC_DetIVA")), 1L);

        Msg().Responder(vb::vbNo);
        w->cmdCerrar->setFocus();
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().mostrados.last().titulo + u'|' + Aviso(),
                 QStringLiteral("Confirmación|") + Con(QStringLiteral("Desea salir sin guardar los datos"), vb::vbYesNo + vb::vbQuestion));
        QVERIFY(w->isVisible());
        QCOMPARE(Contar(QStringLiteral("IVC_Gravado")), 1L);

        Tecla(Qt::Key_Return); // Yes
        QVERIFY(!w->isVisible());
        QCOMPARE((QList<long>{Contar(QStringLiteral("IVC_Gravado")), Contar(QStringLiteral("IVC_DetIVA")), principal.recargas}),
                 (QList<long>{0, 1, 0}));
    }

    // Supplier tracking: with "Registrar en Seguimiento Proveedores" ticked, every press of
    // "Guardar" posts the invoice as the screen shows it then, whatever the header save did.
    void cadaPulsacionPublica()
    {
        Libro();
        auto w = Agregar();
        Factura(*w);
        Guardar(*w);
        QVERIFY(Publicadas().isEmpty()); // the box starts unticked

        Tildar(*w);
        Guardar(*w);
        // A line added after a posting goes with the next press only.
        LineaIB(*w, QStringLiteral("3"), QString(), QStringLiteral("3"));
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("129,00"));
        const QString factura = QStringLiteral("20111111112>30700000022|15/11/2026|0001-00000042|Factura B|DEBE|");
        QCOMPARE(Publicadas(), QStringList{factura + QStringLiteral("126")});
        Guardar(*w);
        QCOMPARE(Publicadas(), (QStringList{factura + QStringLiteral("126"), factura + QStringLiteral("129")}));
        // Unticked again: no more postings.
        Tildar(*w);
        Guardar(*w);
        QCOMPARE(QPair(Publicadas().size(), Msg().mostrados.size()), QPair(qsizetype(2), qsizetype(0)));
    }

    // The tracking book cannot be reached: the error is reported, the invoice stays saved and
    // on screen, and a later press with the book back in place posts it.
    void rutaRota()
    {
        Libro();
        auto w = Agregar();
        const QString ruta = libro->S().RutaFacturacion;
        libro->S().RutaFacturacion = libro->Carpeta() + QStringLiteral("no-existe/");
        Tildar(*w);
        Factura(*w);
        Guardar(*w);
        QCOMPARE(Msg().mostrados.size(), 1);
        QVERIFY(Aviso().endsWith(Con(QStringLiteral(" - seccion [MORLA.SP_EnviarASeguimiento (modGBPROC)]"), vb::vbCritical)));
        QVERIFY(w->isVisible());
        QCOMPARE(Filas(QStringLiteral("select PRVSNRCUIT,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARIN from IVC")),
                 QStringList{QStringLiteral("30700000022|0001-00000042|5|100|21")});
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("126,00"));
        QVERIFY(Publicadas().isEmpty());

        libro->S().RutaFacturacion = ruta;
        Guardar(*w);
        QCOMPARE(QPair(Msg().mostrados.size(), Publicadas().size()), QPair(qsizetype(1), qsizetype(1)));
    }
};

QTEST_MAIN(TstFrmADDConcepto)
#include "tst_frmaddconcepto.moc"
