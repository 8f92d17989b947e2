// Gross-income lines on both invoice windows, driven from the keyboard over a real book: a line
// given by its percentage or by its amount alone, the header total IVCINGBRU rewritten from the
// lines, deleting lines, and the invoices of the earlier single-amount scheme on the modify
// window.

#include "LibroFacturas.h"

namespace {
const QString kLineasIB = QStringLiteral("select IVCdetId,IVCDETIB,IVCDETIBDSC,IVCDETIBVLR,IVCSNROFAC "
                                         "from IVC_DetIngBrutos order by IVCdetId");
const QString kPregunta = QStringLiteral("Esta factura tiene Ingresos brutos guardados con una versión anterior, "
                                         "desea cargar en cero(0)?.");
} // namespace

class TstIngresosBrutos : public QObject, Facturas
{
    Q_OBJECT

    QString Cabecera(const QString &columnas) const
    {
        return Filas(QStringLiteral("select ") + columnas + QStringLiteral(" from IVC where IVCSNROFAC like '0001-%'"))
            .join(u'/');
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
        Campo(w->TxtNumero, QStringLiteral("0001-1"));
        Campo(w->TxtNoGrav, QStringLiteral("0"));
        for (const QString &g : gravados)
            Gravado(*w, g);
        Base(*w, base);
        Campo(w->txtIVCDETIVA, linea[0]);
        LineaIB(*w, linea[1], linea[2], linea[3]);

        if (estilo >= 0) {
            QVERIFY2(Aviso().endsWith(Con(resultado, estilo)), qPrintable(Aviso()));
            // Stopped before the header save.
            QCOMPARE(Contar(QStringLiteral("IVC_DetIngBrutos")) + Contar(QStringLiteral("IVC")), 0L);
            return;
        }
        QVERIFY2(Msg().mostrados.isEmpty(), qPrintable(Msg().Ultimo()));
        // The first line wrote the header, then itself; the header takes the lines' total.
        QCOMPARE(Filas(kLineasIB), QStringList{resultado});
        QCOMPARE(Cabecera(QStringLiteral("IVCSNROFAC,IVCINGBRU")), QStringLiteral("0001-1|") + linea[3]);
        QCOMPARE(w->lstIVC_detIngBru->topLevelItemCount(), 1);
        QCOMPARE(Foco(), w->txtIVC_IngB);
        QVERIFY(!w->cboProv->isEnabled());
    }

    // The header is rewritten from the lines left; the last line deleted on this window clears
    // the VAT total instead.
    void borrarEnLaVentanaDeAlta()
    {
        Libro();
        auto w = Agregar();
        Campo(w->TxtNumero, QStringLiteral("0001-1"));
        Campo(w->TxtNoGrav, QStringLiteral("0"));
        LineaIVA(*w, QStringLiteral("21"), QStringLiteral("21"));
        Campo(w->TxtGrav, QStringLiteral("0")); // saves from now on update, and check "Gravado"
        LineaIB(*w, QStringLiteral("3"), QStringLiteral("Perc. A"), QStringLiteral("30"));
        LineaIB(*w, QStringLiteral("2"), QStringLiteral("Perc. B"), QStringLiteral("20"));
        QCOMPARE(Cabecera(QStringLiteral("IVARIN,IVCINGBRU")), QStringLiteral("21|50"));

        w->lstIVC_detIngBru->setFocus();
        Tecla(Qt::Key_End);
        Borrar(w->lstIVC_detIngBru, Msg());
        QCOMPARE(Filas(kLineasIB), QStringList{QStringLiteral("1|3|Perc. A|30|0001-1")});
        QCOMPARE(Cabecera(QStringLiteral("IVARIN,IVCINGBRU")) + u' ' + w->lbTotalFactura->text(), QStringLiteral("21|30 51,00"));
        QCOMPARE(Foco(), w->lstIVC_detIngBru);

        Borrar(w->lstIVC_detIngBru, Msg());
        QCOMPARE((QStringList{Cabecera(QStringLiteral("IVARIN,IVCINGBRU")), w->lbIVATotal->text(), w->lbIngBrut->text(),
                              w->lbTotalFactura->text()}),
                 (QStringList{"0|30", "00.00", "00,00", "00,00"}));
        // The VAT line is still there, and with it the supplier stays fixed.
        QVERIFY(!w->cboProv->isEnabled());
    }

    // On the modify window the lines are listed on opening (rewriting the header's total), and
    // the last line deleted writes 0, leaving the focus on the list.
    void lineasEnLaVentanaDeModificacion()
    {
        Libro();
        FacturaDeAcme(1000, 0, 99);
        libro->LineaIB(kEmpresa, kAcme, kNumero, 4, 3, QStringLiteral("Perc. IIBB"), 30);
        auto w = Modificar(1000, 0, 99);
        QCOMPARE(w->lstIVC_detIngBru->topLevelItemCount(), 1);
        QCOMPARE((QStringList{Cabecera(QStringLiteral("IVCINGBRU")), w->lbTotalFactura->text(), w->lbIngBrut->text()}),
                 (QStringList{"30", "1035,00", "30,00"}));
        QVERIFY(w->txtINGBRUOld->isHidden() && w->lbINGBOld->isHidden() && !w->LegadoIngBrutos());
        // It has a taxed amount: number and supplier fixed.
        QVERIFY(w->TxtNumero->isReadOnly() && !w->cboProv->isEnabled());

        Campo(w->TxtGrav, QStringLiteral("0"));
        Borrar(w->lstIVC_detIngBru, Msg());
        QCOMPARE(Foco(), w->lstIVC_detIngBru);
        QCOMPARE(Cabecera(QStringLiteral("IVCINGBRU")) + u' ' + w->lbTotalFactura->text(), QStringLiteral("0 1005,00"));
        QVERIFY(w->cboProv->isEnabled());
    }

    // An invoice of the earlier scheme: its amount on the header, no lines. It shows the amount
    // read-only until it is given up (F11 or a line by its amount, answering Yes) or a line is
    // added by its percentage.
    void versionAnterior_data()
    {
        QTest::addColumn<QString>("accion"); // F11, a line by its amount, a line by its percentage
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<QString>("cabecera"); // IVCFPERIOD|IVCINGBRU afterwards
        QTest::addColumn<int>("lineas");
        QTest::newRow("guardar, No") << "F11" << int(vb::vbNo) << "01/10/2026|150" << 0;
        QTest::newRow("guardar, Sí") << "F11" << int(vb::vbYes) << "01/11/2026|0" << 0;
        QTest::newRow("línea por monto, No") << "monto" << int(vb::vbNo) << "01/10/2026|150" << 0;
        QTest::newRow("línea por monto, Sí") << "monto" << int(vb::vbYes) << "01/11/2026|30" << 1;
        QTest::newRow("línea por porcentaje") << "porcentaje" << int(vb::vbNo) << "01/11/2026|30" << 1;
    }
    void versionAnterior()
    {
        QFETCH(QString, accion);
        QFETCH(int, respuesta);
        QFETCH(QString, cabecera);
        QFETCH(int, lineas);
        Libro();
        FacturaDeAcme(1000, 0, 150);
        auto w = Modificar(1000, 0, 150);
        // Opening it lost nothing: the old amount is still on the header.
        QCOMPARE(Cabecera(QStringLiteral("IVCINGBRU")) + u' ' + w->lbIngBrut->text(), QStringLiteral("150 00,00"));
        QVERIFY(w->LegadoIngBrutos() && w->lbINGBOld->isVisible());
        w->txtINGBRUOld->setFocus();
        Teclear(QStringLiteral("9"));
        Campo(w->TxtGrav, QStringLiteral("0"));

        // A line by its percentage gives the old amount up without a question.
        const bool pregunta = accion != QLatin1String("porcentaje");
        Msg().Responder(respuesta);
        if (accion == QLatin1String("F11")) {
            Tecla(Qt::Key_F11);
        } else {
            Base(*w, pregunta ? QStringLiteral("total") : QString());
            LineaIB(*w, pregunta ? QString() : QStringLiteral("3"), QString(), QStringLiteral("30"));
        }

        QCOMPARE(Msg().mostrados.size(), pregunta ? 1 : 0);
        if (pregunta)
            QCOMPARE(Aviso(), Con(kPregunta, vb::vbYesNo + vb::vbQuestion));
        QCOMPARE(Cabecera(QStringLiteral("IVCFPERIOD,IVCINGBRU")), cabecera);
        QCOMPARE(Contar(QStringLiteral("IVC_DetIngBrutos")), long(lineas));

        const bool retirado = respuesta == vb::vbYes || !pregunta;
        QCOMPARE(QPair(w->Guardado(), w->txtINGBRUOld->isVisible()), QPair(retirado, !retirado));
        QCOMPARE(w->txtINGBRUOld->text(), retirado ? QStringLiteral("0") : QStringLiteral("150"));
        if (retirado) {
            // Given up once: later saves ask nothing.
            Msg().Limpiar();
            Tecla(Qt::Key_F11);
            QVERIFY(Msg().mostrados.isEmpty());
        }
    }
};

QTEST_MAIN(TstIngresosBrutos)
#include "tst_ingresosbrutos.moc"
