// Gross-income lines on both invoice windows, driven from the keyboard over a real book: a line
// given by its percentage or by its amount alone, the header total IVCINGBRU rewritten from the
// lines, deleting lines on the modify window (the add window's is tested with its VAT lines), and
// the invoices of the earlier single-amount scheme on the modify window.

#include "LibroFacturas.h"

class TstIngresosBrutos : public QObject, Facturas
{
    Q_OBJECT

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
        QTest::newRow("porcentaje, tasa IVA vacía") << nada << "" << L{"", "3", "", "30"} << "1|3|Iva del :|30|0001-1" << -1;
        QTest::newRow("porcentaje, valor no numérico") << nada << "" << L{"21", "3", "", "x"} << "Debe ingresar un valor númerico" << int(vb::vbOKOnly);
        QTest::newRow("monto sobre base cero") << L{"100", "-100"} << "total" << L{"", "", "", "30"}
                                               << "División por cero\r\n\r\n11 - seccion [morla.ingbrutosdet_add]" << int(vb::vbCritical);
        QTest::newRow("monto sin base elegida") << L{"100"} << "" << L{"", "", "", "30"} << "13 - seccion [morla.ingbrutosdet_add]" << int(vb::vbCritical);
    }
    void lineaNueva()
    {
        QFETCH(QStringList, gravados);
        QFETCH(QString, base);
        QFETCH(QStringList, linea);
        QFETCH(QString, resultado);
        QFETCH(int, estilo);

        Libro();
        auto w = Agregar();
        Campo(w->TxtNumero, "0001-1");
        Campo(w->TxtNoGrav, "0");
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

QTEST_MAIN(TstIngresosBrutos)
#include "tst_ingresosbrutos.moc"
