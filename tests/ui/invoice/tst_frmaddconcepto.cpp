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

    // A fresh book and the add window on it, with the number and the untaxed amount typed.
    std::unique_ptr<frmADDConcepto> Nueva(const QString &numero, const QString &noGravado)
    {
        Libro();
        auto w = Agregar();
        Campo(w->TxtNumero, numero);
        Campo(w->TxtNoGrav, noGravado);
        return w;
    }
    // The postings recorded for the company in the book's supplier-tracking file, as
    // "company>supplier|date|number|description|side|amount".
    QStringList Publicadas() const
    {
        SegProveedoresServices::clMAinSP sp;
        sp.setsp_pcuituser(kEmpresa);
        sp.setPathDB(libro->Carpeta() + "proveedores.mdb");
        QStringList out;
        for (const auto &i : sp.Imputaciones())
            out << QStringList{i.empresa + u'>' + i.proveedor, i.fecha.toString(u"dd/MM/yyyy"), i.numero, i.descripcion,
                               i.lado, conv::NumeroATexto(i.importe)}.join(u'|');
        return out;
    }

private slots:
    // The checks of "Guardar" and of a taxed amount typed with Enter. Afterwards: the header rows,
    // the taxed amounts stored, the first one listed, the invoice total and the main window's reloads.
    void rechazosYMontos_data()
    {
        QTest::addColumn<bool>("proveedores");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("noGravado"); // empty: left as the window opens it
        QTest::addColumn<QString>("monto");     // empty: "Guardar" is pressed instead
        QTest::addColumn<QString>("mensaje");   // empty: nothing is shown
        QTest::addColumn<QString>("despues");
        QTest::newRow("sin proveedores") << false << "1" << "0" << "" << "Debe seleccionar un Proveedor" << "0|0||00,00|1";
        QTest::newRow("número en blanco") << true << "   " << "0" << "" << "Debe ingresar un número de factura" << "0|0||00,00|1";
        QTest::newRow("no gravado vacío") << true << "1" << "" << "" << "El Valor No Gravado debe ser númerico" << "0|0||00,00|1";
        // The statement fails without a word.
        QTest::newRow("apóstrofo en el número") << true << "0001'2" << "0" << "" << "" << "0|0||00,00|1";
        QTest::newRow("monto sin número") << true << "" << "" << "10" << "Primero debe ingresar número de factura" << "0|0||00,00|0";
        QTest::newRow("monto texto") << true << "1" << "" << "diez" << "Debe ingresar un valor númerico." << "0|0||00,00|0";
        QTest::newRow("monto cero") << true << "1" << "" << "0" << "Debe ingresar un valor mayor a cero" << "0|0||00,00|0";
        QTest::newRow("monto negativo") << true << "1" << "" << "-5" << "" << "0|1|-05,00|-05,00|0";
        QTest::newRow("monto con punto") << true << "1" << "" << "12.5" << "" << "0|1|12,50|12,50|0";
    }
    void rechazosYMontos()
    {
        QFETCH(bool, proveedores);
        QFETCH(QString, numero);
        QFETCH(QString, noGravado);
        QFETCH(QString, monto);
        QFETCH(QString, mensaje);
        QFETCH(QString, despues);
        Libro(proveedores);
        auto w = Agregar();
        Campo(w->TxtNumero, numero);
        if (!noGravado.isEmpty())
            Campo(w->TxtNoGrav, noGravado);
        if (monto.isEmpty())
            Guardar(*w);
        else
            Gravado(*w, monto);
        QCOMPARE(Aviso(), mensaje.isEmpty() ? Con(QString(), -1) : Con(mensaje, vb::vbExclamation));
        const QListWidgetItem *primero = w->lstGravado->item(0);
        QCOMPARE((QStringList{QString::number(Contar("IVC")), QString::number(Contar("IVC_Gravado")),
                              primero ? primero->text() : QString(), w->lbTotalFactura->text(),
                              QString::number(principal.recargas)}).join(u'|'),
                 despues);
    }

    // What is not a number in "No Gravado" becomes 0 as it is typed, and the total follows it;
    // "Gravado" is checked by the saves that update only. Taxed amounts fix the number while listed.
    void encabezadoYGravados()
    {
        auto w = Nueva("0001-1", "abc");
        QCOMPARE(w->TxtNoGrav->text(), "0");
        Reescribir("15,5");
        QCOMPARE(w->lbTotalFactura->text(), "15,50");
        Campo(w->txtDescripcion, "D'Angelo");
        Campo(w->TxtGrav, "x1");
        Guardar(*w);
        QVERIFY(Msg().mostrados.isEmpty() && w->Guardado());
        // The description keeps its apostrophe as "´", on screen and in the book.
        QCOMPARE(Filas("select DESCRIPCION from IVC") << w->txtDescripcion->text(), QStringList(2, "D´Angelo"));
        Guardar(*w);
        QCOMPARE(Msg().Ultimo(), "El Valor Gravado debe ser númerico");

        Gravado(*w, "100");
        Gravado(*w, "200");
        w->lstGravado->setFocus();
        w->lstGravado->setCurrentRow(-1);
        Tecla(Qt::Key_Delete);
        QCOMPARE(Msg().Ultimo(), "Debe seleccionar un valor Gravado");
        Tecla(Qt::Key_Home);
        Borrar(w->lstGravado, Msg(), vb::vbNo);
        QCOMPARE(Aviso(), Con("Confirma eliminar el Gravado 100,00", vb::vbYesNo + vb::vbQuestion));
        QCOMPARE(w->lstGravado->count(), 2);
        Borrar(w->lstGravado, Msg());
        QCOMPARE(Filas("select GRAVAD_id,GRAVAD_Valor from IVC_Gravado"), QStringList{"2|200"});
        QCOMPARE(w->cboGravadoIVA->itemText(0) + w->lbGravTotal->text(), "200,00200,00");
        QVERIFY(w->TxtNumero->isReadOnly());

        // The last amount gone, the number is free again; a new one updates the row found by the old.
        w->lstGravado->setCurrentRow(0);
        Borrar(w->lstGravado, Msg());
        Campo(w->TxtNumero, "0001-2");
        Guardar(*w);
        QCOMPARE(Filas("select IVCSNROFAC from IVC"), QStringList{"0001-2"});
        QCOMPARE(Msg().mostrados.size(), 5); // nothing since the questions
    }

    // The duplicate check refuses the header, and the invoice on screen is posted all the same;
    // the same number of another supplier is no duplicate.
    void duplicadoEnOtroPeriodo()
    {
        auto w = Nueva("0001-7", "12,5");
        libro->Factura(kEmpresa, kAcme, "01/10/2026", "05/10/2026", "A", "0001-7", 10, 0, 0, 0);
        w->Chk_EnviarASeguimiento->setFocus();
        Tecla(Qt::Key_Space); // ticked
        Guardar(*w);
        QCOMPARE(Aviso(), Con(QStringLiteral("Este Numero de factura ya fue cargada [ 0001-7 ]\r\nEL DIA 01/11/2026\r\n"
                                             "FECHA DE FACTURA 05/10/2026\r\nEL PERIODO 10/2026"), vb::vbExclamation));
        QCOMPARE(QPair(w->Guardado(), Contar("IVC")), QPair(false, 1L));
        QCOMPARE(Publicadas(), QStringList{"20111111112>30700000011|21/11/2026|0001-7|Factura A|DEBE|12,5"});
        w->cboProv->setFocus();
        Tecla(Qt::Key_Down);
        Guardar(*w);
        QCOMPARE(Contar("IVC"), 2L);
    }

    // VAT lines, and what deleting lines does to the header's totals on this window.
    void lineasIVA()
    {
        auto w = Nueva("0001-1", "0");
        libro->LineaIVA(kEmpresa, kAcme, "0001-9", 7, 21, "otra factura", 1);
        // The two refusals differ in their icon only.
        LineaIVA(*w, "x", "1");
        QCOMPARE(Aviso(), Con("Debe ingresar un valor númerico", vb::vbCritical));
        LineaIVA(*w, "21", "x");
        QCOMPARE(Aviso(), Con("Debe ingresar un valor númerico", vb::vbOKOnly));
        QCOMPARE(Contar("IVC"), 0L);

        LineaIVA(*w, "10.5", "10,50");
        // From now on the header save updates, and so checks "Gravado": refused, no line.
        Campo(w->txtIVCDETDSC, "it's");
        LineaIVA(*w, "27", "27");
        QCOMPARE(Msg().Ultimo(), "El Valor Gravado debe ser númerico");
        QCOMPARE(Contar("IVC_DetIVA"), 2L);
        Campo(w->TxtGrav, "0");
        w->txtIVCDETVLR->setFocus();
        Tecla(Qt::Key_Return);
        // Ids grow over every invoice of the supplier; the description defaults from the rate box.
        QCOMPARE(Filas(QStringLiteral("select IVCdetId,IVCDETIVA,IVCDETDSC,IVCDETVLR from IVC_DetIVA "
                                      "where IVCSNROFAC = '0001-1' order by IVCdetId")),
                 (QStringList{"8|10,5|Iva del 10.5:|10,5", "9|27|it s|27"}));
        QCOMPARE(Filas("select IVARIN from IVC"), QStringList{"37,5"});
        // Gross-income lines deleted on this window: the header takes the lines left; the last one
        // gone clears the VAT total instead, not the lines' own.
        LineaIB(*w, "3", "Perc. A", "30");
        LineaIB(*w, "2", "Perc. B", "20");
        w->lstIVC_detIngBru->setFocus();
        Tecla(Qt::Key_End);
        Borrar(w->lstIVC_detIngBru, Msg());
        QCOMPARE(Filas("select IVARIN,IVCINGBRU from IVC").join(u'/') + u' ' + w->lbTotalFactura->text(), "37,5|30 67,50");
        Borrar(w->lstIVC_detIngBru, Msg());
        QCOMPARE((QStringList{Filas("select IVARIN,IVCINGBRU from IVC").join(u'/'), w->lbIVATotal->text(),
                              w->lbTotalFactura->text(), QString::number(w->cboProv->isEnabled())}),
                 (QStringList{"0|30", "00.00", "00,00", "0"}));

        w->lstIVC_DetIVA->setCurrentItem(w->lstIVC_DetIVA->topLevelItem(1));
        Borrar(w->lstIVC_DetIVA, Msg());
        QCOMPARE(Msg().Ultimo() + u' ' + w->lbTotalFactura->text(), "Confirma eliminar el concepto seleccinado? 10,50");
        Borrar(w->lstIVC_DetIVA, Msg());
        // The last line gone: the supplier is free again; this window leaves IVARIN as it was.
        QCOMPARE(w->lbIVATotal->text() + Filas("select IVARIN from IVC").join(u'/'), "00,0010,5");
        QVERIFY(w->cboProv->isEnabled() && Contar("IVC_DetIVA") == 1);
    }

    // Esc empties the VAT line boxes and never closes. Closing without a header save: the taxed
    // amounts go, VAT lines stay. The header insert here writes no row (the book ignores it),
    // which keeps the window in insert mode.
    void salirSinGuardar()
    {
        auto w = Nueva("0001-1", "0");
        libro->Ejecutar("CREATE TRIGGER ignorar BEFORE INSERT ON IVC BEGIN SELECT RAISE(IGNORE); END");
        Gravado(*w, "100");
        LineaIVA(*w, "21", "21");
        Campo(w->txtIVCDETIVA, "21");
        Campo(w->txtIVCDETDSC, "algo");
        Tecla(Qt::Key_Escape);
        QCOMPARE(w->txtIVCDETIVA->text() + w->txtIVCDETDSC->text() + Foco()->objectName(), "lstIVC_DetIVA");
        w->cboProv->setFocus();
        Teclas({Qt::Key_Escape, Qt::Key_Escape});
        QVERIFY(w->isVisible() && Msg().mostrados.isEmpty());

        Msg().Responder(vb::vbNo);
        w->cmdCerrar->setFocus();
        Tecla(Qt::Key_Return);
        QCOMPARE(Aviso(), Con("Desea salir sin guardar los datos", vb::vbYesNo + vb::vbQuestion));
        QCOMPARE(QPair(w->isVisible(), Contar("IVC_Gravado")), QPair(true, 1L));

        Tecla(Qt::Key_Return); // Yes
        QCOMPARE((QList<long>{w->isVisible(), Contar("IVC_Gravado"), Contar("IVC_DetIVA"), principal.recargas}),
                 (QList<long>{0, 0, 1, 0}));
    }

    // Supplier tracking: with "Registrar en Seguimiento Proveedores" ticked (it starts unticked),
    // every press of "Guardar" posts the invoice as the screen shows it then, whatever the header
    // save did. A tracking book that cannot be reached is reported; the invoice stays saved and on
    // screen, and a later press with the book back in place posts it.
    void seguimiento()
    {
        Libro();
        auto w = Agregar();
        QVERIFY(!w->Chk_EnviarASeguimiento->isChecked());
        const QString ruta = libro->S().RutaFacturacion;
        libro->S().RutaFacturacion = libro->Carpeta() + "no-existe/";
        w->Chk_EnviarASeguimiento->setFocus();
        Tecla(Qt::Key_Space); // ticked
        // Beta's invoice of type "B": untaxed 5, taxed 100 and a VAT line of 21 (which writes the header).
        w->cboProv->setFocus();
        Tecla(Qt::Key_Down);
        Campo(w->TxtFecha, "15/11/2026");
        w->cboTipo->setFocus();
        Tecla(Qt::Key_Down);
        Campo(w->TxtNumero, "0001-00000042");
        Campo(w->TxtNoGrav, "5");
        Gravado(*w, "100");
        LineaIVA(*w, "21", "21");
        Guardar(*w);
        // One error report; the posting itself is tested with the tracking book.
        QVERIFY(Msg().mostrados.size() == 1 && Msg().UltimoEstilo() == vb::vbCritical && w->isVisible());
        QVERIFY(Publicadas().isEmpty());
        QCOMPARE(Filas("select PRVSNRCUIT,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARIN from IVC"),
                 QStringList{"30700000022|0001-00000042|5|100|21"});

        libro->S().RutaFacturacion = ruta;
        Guardar(*w);
        // A line added after a posting goes with the next press only.
        LineaIB(*w, "3", QString(), "3");
        QCOMPARE(w->lbTotalFactura->text(), "129,00");
        const QString factura = "20111111112>30700000022|15/11/2026|0001-00000042|Factura B|DEBE|";
        QCOMPARE(Publicadas(), QStringList{factura + "126"});
        Guardar(*w);
        QCOMPARE(Publicadas(), (QStringList{factura + "126", factura + "129"}));
        w->Chk_EnviarASeguimiento->setFocus();
        Tecla(Qt::Key_Space); // unticked again: no more postings
        Guardar(*w);
        QCOMPARE(QPair(Publicadas().size(), Msg().mostrados.size()), QPair(qsizetype(2), qsizetype(1)));
    }
};

QTEST_MAIN(TstFrmADDConcepto)
#include "tst_frmaddconcepto.moc"
