// The add-invoice window driven from the keyboard over a real book: the header save and its
// checks, the taxed amounts, the VAT lines and the totals, and the hand-off to supplier
// tracking (a posting that fails is reported and loses nothing) and the tracking book itself.
// Then gross-income lines on both invoice windows: a line given by its percentage or by its amount
// alone, the header total IVCINGBRU rewritten from the lines, deleting lines on the modify window,
// and the invoices of the earlier single-amount scheme on the modify window.

#include "LibroFacturas.h"
#include "app/core/Seguimiento.h"
#include "data/Convenciones.h"
#include "data/SegProveedores.h"

#include <QCheckBox>

class TstFrmADDConcepto : public QObject, Facturas
{
    Q_OBJECT
    static inline const QString kTrampa = " - seccion [MORLA.SP_EnviarASeguimiento (modGBPROC)]";

    // A fresh book and the add window on it, with the number and the untaxed amount typed.
    std::unique_ptr<frmADDConcepto> Nueva(const QString &numero, const QString &noGravado)
    {
        Libro();
        auto w = Agregar();
        Campo(w->TxtNumero, numero);
        Campo(w->TxtNoGrav, noGravado);
        return w;
    }
    // The postings recorded for the company (of one supplier when given) in the book's supplier-tracking
    // file, as "company>supplier|date|number|description|side|amount"; one with no registration
    // stamp starts with "?".
    QStringList Publicadas(const QString &proveedor = QString()) const
    {
        SegProveedoresServices::clMAinSP sp;
        sp.setsp_pcuituser(kEmpresa);
        sp.setPathDB(libro->Carpeta() + "proveedores.mdb");
        QStringList out;
        for (const auto &i : sp.Imputaciones(proveedor))
            out << QStringList{(i.registrado.isEmpty() ? "?" : "") + i.empresa + u'>' + i.proveedor,
                               i.fecha.toString(u"dd/MM/yyyy"), i.numero, i.descripcion, i.lado,
                               conv::NumeroATexto(i.importe)}.join(u'|');
        return out;
    }

    QString Cabecera(const QString &columnas) const
    {
        return Filas("select " + columnas + " from IVC where IVCSNROFAC like '0001-%'").join(u'/');
    }
    // Picks the base of a line given by its amount: the first taxed amount or the total.
    static void Base(VentanaConcepto &w, const QString &cual)
    {
        if (cual.isEmpty())
            return;
        w.cboGravadoIngBru->setFocus();
        Tecla(cual == QLatin1String("total") ? Qt::Key_End : Qt::Key_Home);
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
        w->lstGravado->setCurrentRow(0);
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
        QCOMPARE(Msg().mostrados.size(), 4); // nothing since the questions
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
        // A rate or a value that is not a number is refused before anything is written.
        LineaIVA(*w, "x", "1");
        LineaIVA(*w, "21", "x");
        QCOMPARE(QPair(Msg().mostrados.size(), Contar("IVC")), QPair(qsizetype(2), 0L));

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
        // One error report, in the error trap's words.
        QVERIFY2(Msg().mostrados.size() == 1 && Msg().Ultimo().endsWith(kTrampa) && w->isVisible(),
                 qPrintable(Aviso()));
        QCOMPARE(QPair(Msg().UltimoEstilo(), Publicadas()), QPair(int(vb::vbCritical), QStringList()));
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

    // Straight to the tracking book: one without its table gets it on the first send; every send
    // is one posting; another company's postings are not listed, nor another supplier's.
    void envioDirecto()
    {
        Libro();
        libro->Ejecutar("proveedores.mdb", {"drop table IMPUTACIONES"});
        const QList<std::pair<QString, double>> envios{{kEmpresa, 1210.5}, {kEmpresa, 1300}, {"20-9", 5}};
        for (const auto &[empresa, importe] : envios)
            SP_EnviarASeguimiento(libro->S(), empresa, kBeta, "15-03-2026", "0001-00000012", "Factura A", importe);
        QVERIFY(Msg().mostrados.isEmpty());
        const QString f = "20111111112>30700000022|15/03/2026|0001-00000012|Factura A|DEBE|";
        QCOMPARE(Publicadas(kBeta), (QStringList{f + "1210,5", f + "1300"}));
        QCOMPARE(Publicadas(kAcme), QStringList());
    }
    // A date that is not a date is reported in the error trap's words.
    void fechaInvalida()
    {
        Libro();
        SP_EnviarASeguimiento(libro->S(), kEmpresa, kBeta, "xx", "1", "Factura A", 121);
        QCOMPARE(QPair(Msg().mostrados.size(), Msg().UltimoEstilo()), QPair(qsizetype(1), int(vb::vbCritical)));
        QVERIFY2(Msg().Ultimo().endsWith(kTrampa), qPrintable(Msg().Ultimo()));
    }

    void lineaNueva_data()
    {
        QTest::addColumn<QStringList>("gravados");
        QTest::addColumn<QString>("base");       // "total", "primero" or none picked
        QTest::addColumn<QStringList>("linea"); // the VAT rate box, then percentage, description, value
        QTest::addColumn<QString>("resultado"); // the row stored, or how the message shown ends
        QTest::addColumn<int>("estilo");        // the message's, -1 for a row stored

        const QStringList dos{"400", "600"}, nada;
        using L = QStringList;
        QTest::newRow("monto sobre el total") << dos << "total" << L{"21", "", "", "30"} << "1|3|Ingresos Brutos|30|0001-1" << -1;
        QTest::newRow("monto sobre un gravado") << dos << "primero" << L{"", "", "Perc. O'Neil", "10"} << "1|2,5|Perc. O Neil|10|0001-1" << -1;
        QTest::newRow("porcentaje, tasa IVA 21") << dos << "total" << L{"21", "3", "", "30"} << "1|3|Iva del 21:|30|0001-1" << -1;
        QTest::newRow("porcentaje, valor no numérico") << nada << "" << L{"21", "3", "", "x"} << "Debe ingresar un valor númerico" << int(vb::vbOKOnly);
        QTest::newRow("monto sin base elegida") << L{"100"} << "" << L{"", "", "", "30"} << "13 - seccion [morla.ingbrutosdet_add]" << int(vb::vbCritical);
    }
    void lineaNueva()
    {
        QFETCH(QStringList, gravados);
        QFETCH(QString, base);
        QFETCH(QStringList, linea);
        QFETCH(QString, resultado);
        QFETCH(int, estilo);

        auto w = Nueva("0001-1", "0");
        for (const QString &g : gravados)
            Gravado(*w, g);
        Base(*w, base);
        Campo(w->txtIVCDETIVA, linea[0]);
        LineaIB(*w, linea[1], linea[2], linea[3]);

        if (estilo >= 0) {
            QVERIFY2(Aviso().endsWith(Con(resultado, estilo)), qPrintable(Aviso()));
            // Stopped before the header save.
            QCOMPARE(Contar("IVC_DetIngBrutos") + Contar("IVC"), 0L);
            return;
        }
        QVERIFY2(Msg().mostrados.isEmpty(), qPrintable(Msg().Ultimo()));
        // The first line wrote the header, then itself; the header takes the lines' total.
        QCOMPARE(Filas("select IVCdetId,IVCDETIB,IVCDETIBDSC,IVCDETIBVLR,IVCSNROFAC from IVC_DetIngBrutos"),
                 QStringList{resultado});
        QCOMPARE(Cabecera("IVCSNROFAC,IVCINGBRU"), "0001-1|" + linea[3]);
        QVERIFY(w->lstIVC_detIngBru->topLevelItemCount() == 1 && Foco() == w->txtIVC_IngB && !w->cboProv->isEnabled());
    }

    // On the modify window the lines are listed on opening (rewriting the header's total), and
    // the last line deleted writes 0, leaving the focus on the list.
    void lineasEnLaVentanaDeModificacion()
    {
        Libro();
        FacturaDeAcme(1000, 0, 99);
        libro->LineaIB(kEmpresa, kAcme, kNumero, 4, 3, "Perc. IIBB", 30);
        auto w = Modificar(1000, 0, 99);
        QCOMPARE((QStringList{Cabecera("IVCINGBRU"), w->lbTotalFactura->text(), w->lbIngBrut->text(),
                              QString::number(w->lstIVC_detIngBru->topLevelItemCount())}),
                 (QStringList{"30", "1035,00", "30,00", "1"}));
        QVERIFY(w->txtINGBRUOld->isHidden() && w->lbINGBOld->isHidden() && !w->LegadoIngBrutos());
        // It has a taxed amount and a line: number and supplier fixed.
        QVERIFY(w->TxtNumero->isReadOnly() && !w->cboProv->isEnabled());

        Campo(w->TxtGrav, "0");
        Borrar(w->lstIVC_detIngBru, Msg());
        QCOMPARE(Cabecera("IVCINGBRU") + u' ' + w->lbTotalFactura->text(), "0 1005,00");
        QVERIFY(Foco() == w->lstIVC_detIngBru && w->cboProv->isEnabled());
    }

    // An invoice of the earlier scheme: its amount on the header, no lines. It shows the amount
    // read-only until it is given up (F11 or a line by its amount, answering Yes) or a line is
    // added by its percentage.
    void versionAnterior_data()
    {
        QTest::addColumn<QString>("accion"); // F11, a line by its amount, a line by its percentage
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<QString>("cabecera"); // IVCFPERIOD|IVCINGBRU afterwards, then the lines stored
        QTest::newRow("guardar, No") << "F11" << int(vb::vbNo) << "01/10/2026|150 0";
        QTest::newRow("guardar, Sí") << "F11" << int(vb::vbYes) << "01/11/2026|0 0";
        QTest::newRow("línea por monto, No") << "monto" << int(vb::vbNo) << "01/10/2026|150 0";
        QTest::newRow("línea por monto, Sí") << "monto" << int(vb::vbYes) << "01/11/2026|30 1";
        QTest::newRow("línea por porcentaje") << "porcentaje" << int(vb::vbNo) << "01/11/2026|30 1";
    }
    void versionAnterior()
    {
        QFETCH(QString, accion);
        QFETCH(int, respuesta);
        QFETCH(QString, cabecera);
        Libro();
        FacturaDeAcme(1000, 0, 150);
        auto w = Modificar(1000, 0, 150);
        // Opening it lost nothing: the old amount is still on the header.
        QCOMPARE(Cabecera("IVCINGBRU") + u' ' + w->lbIngBrut->text(), "150 00,00");
        QVERIFY(w->LegadoIngBrutos() && w->lbINGBOld->isVisible());
        w->txtINGBRUOld->setFocus();
        Teclear("9");
        Campo(w->TxtGrav, "0");

        // A line by its percentage gives the old amount up without a question.
        const bool pregunta = accion != "porcentaje";
        Msg().Responder(respuesta);
        Base(*w, pregunta ? "total" : QString());
        if (accion == "F11")
            Tecla(Qt::Key_F11);
        else
            LineaIB(*w, pregunta ? QString() : "3", QString(), "30");

        QCOMPARE(Msg().UltimoEstilo(), pregunta ? vb::vbYesNo + vb::vbQuestion : -1); // the question, or none
        const long lineas = Contar("IVC_DetIngBrutos");
        QCOMPARE(Cabecera("IVCFPERIOD,IVCINGBRU") + u' ' + QString::number(lineas), cabecera);

        // Given up, it shows 0 and hides, and a later save asks nothing; kept, it asks again.
        const bool retirado = respuesta == vb::vbYes || !pregunta;
        QCOMPARE(QPair(w->Guardado(), w->txtINGBRUOld->isVisible()), QPair(retirado, !retirado));
        QCOMPARE(w->txtINGBRUOld->text(), retirado ? "0" : "150");
        const qsizetype vistos = Msg().mostrados.size();
        Msg().Responder(vb::vbNo);
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().mostrados.size() - vistos, retirado ? 0 : 1);
    }
};

QTEST_MAIN(TstFrmADDConcepto)
#include "tst_frmaddconcepto.moc"
