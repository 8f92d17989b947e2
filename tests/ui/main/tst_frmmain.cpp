// The main window and the company and period window over it: start-up, period list (filling the
// window) and totals, delete, print settings and their checks, and the keys that print (F12),
// export (F10) and change company and period (F6).

#include "Inicio.h"
#include "common/Archivo.h"
#include "common/DialogoGuion.h"
#include "common/ImpresoraGrabadora.h"
#include "data/Convenciones.h"
#include "ui/invoice/Teclado.h"

#include <QDir>
#include <QHeaderView>
#include <QScrollBar>

// Alfa's November 2026 totals: taxed, untaxed, VAT, gross income, total.
static const QString kTotalesNov = QStringLiteral("305,00|10,50|64,05|07,50|387,05");

class TstFrmMain : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        libro = std::make_unique<LibroDePrueba>();
        LlenarLibro(*libro);
        impresora = ImpresoraGrabadora();
        libro->S().impresora = &impresora;
    }
    void cleanup()
    {
        ventana.reset();
        libro.reset();
    }
    void arranque_data()
    {
        QTest::addColumn<QString>("cuit");
        QTest::addColumn<QString>("periodo");
        QTest::addColumn<QString>("propuesta");
        QTest::addColumn<QString>("elegido"); // the session's period once confirmed, and its end
        // Today is 21/11/2026. The period confirmed is written without a leading zero on the month.
        QTest::newRow("primera vez") << "" << "" << "Alfa SA NOVIEMBRE 2026" << "01/11/2026-30/11/2026";
        QTest::newRow("empresa que ya no existe") << "99-9" << "15/03/2005" << "Alfa SA NOVIEMBRE 2026" << "01/11/2026-30/11/2026";
        QTest::newRow("empresa sin periodo") << kBeta << "" << "Beta SRL ENERO 1990" << "01/1/1990-31/01/1990";
        QTest::newRow("periodo no fecha") << kBeta << "13/13/2005" << "Beta SRL ENERO 1990" << "01/1/1990-31/01/1990";
        // December ends on 31 December of the previous year.
        QTest::newRow("diciembre") << kBeta << "15/12/2025" << "Beta SRL DICIEMBRE 2025" << "01/12/2025-31/12/2024";
    }
    void arranque()
    {
        QFETCH(QString, cuit);
        QFETCH(QString, periodo);
        QFETCH(QString, propuesta);
        QFETCH(QString, elegido);
        libro->Recordar(cuit, periodo);
        frmMAIN w(libro->S());
        QString visto;
        AlAbrirse<frmOpciones>([&](frmOpciones &f) {
            visto = f.cboUSR->currentText() + u' ' + f.cboMES->currentText() + u' ' + f.TxtYear->text();
            QTest::keyClick(f.cboMES, Qt::Key_F11);
        });
        QVERIFY(w.Form_Load());
        QCOMPARE(visto, propuesta);
        const Sesion &s = libro->S();
        QCOMPARE((QStringList{s.Periodo + u'-' + s.PeriodoHasta, w.lbUSRSNOMBR->text(), w.lbIVCFPERIOD->text(), w.lbFecha->text(),
                              w.txtIMPFuente->text() + u'/' + w.txtIMPLinxHoja->text(), Recordado("USRSNROCUIT"),
                              Totales(w)}),
                 (QStringList{elegido, propuesta.section(u' ', 0, 1), elegido.section(u'-', 0, 0),
                              conv::FechaLarga(QDate(2026, 11, 21)), "9/30", s.CuitUsuario,
                              // Beta has no invoices in the periods proposed: the totals are zero.
                              propuesta.startsWith(u"Alfa") ? kTotalesNov : u"00,00|00,00|00,00|00,00|00,00"_qs}));
    }
    // At start-up the company and period window is walked round with Enter, its year moved by the
    // spin bar, and left with Esc: the program ends without showing the main window.
    void arranqueEscTerminaSinVentana()
    {
        frmMAIN w(libro->S());
        QStringList recorrido;
        AlAbrirse<frmOpciones>([&recorrido](frmOpciones &f) {
            f.cboUSR->setFocus();
            for (int i = 0; i < 4; ++i) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
                recorrido << QApplication::focusWidget()->objectName();
            }
            for (const Qt::Key tecla : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down}) {
                QTest::keyClick(f.VScroll1, tecla);
                recorrido << f.TxtYear->text();
            }
            QTest::keyClick(f.TxtYear, Qt::Key_Escape);
        });
        QVERIFY(!w.Form_Load());
        QCOMPARE(recorrido, (QStringList{"cboMES", "TxtYear", "VScroll1", "cboUSR", "2027", "2026", "2025"}));
        QVERIFY(libro->S().Cancelado && !w.isVisible());
        QCOMPARE(w.lbUSRSNOMBR->text() + Recordado("USRSNROCUIT") + QString::number(w.Grd->Rows()), QStringLiteral("1"));
    }
    void listaYTotales()
    {
        frmMAIN &w = Abrir(kAlfa);
        for (int c = 0; c < 11; ++c)
            QCOMPARE(w.Grd->isColumnHidden(c), c == 3 || c == 10);
        // Amounts "00.00"; the IIBB column as the book returns it; the raw VAT in column 10.
        QCOMPARE(FilasGrilla(w), (QStringList{
            "03/11/26|B|10|30-70000000-2|Proveedor Dos|100,00|10,50|21,00|0|131,50|21",
            "05/11/26|A|9|30-70000000-1|Proveedor Uno|200,00|00,00|42,00|2,5|244,50|42",
            "05/11/26|A|10|30-70000000-1|Proveedor Uno|05,00|00,00|01,05|5|11,05|1,05"}));
        // The newest invoice is current and selected.
        QCOMPARE(w.Grd->Row(), 3);
        QVERIFY(w.Grd->selectionModel()->isRowSelected(2, QModelIndex()));
        QCOMPARE(Totales(w), kTotalesNov);
        // The columns fill the window in the proportions of their design widths, and follow it as it grows.
        for (const int ancho : {1000, 1500}) {
            w.resize(ancho, 700);
            QTRY_COMPARE(w.width(), ancho);
            QCOMPARE(w.Grd->horizontalHeader()->length(), w.Grd->viewport()->width());
            QVERIFY(qAbs(w.Grd->columnWidth(4) / double(w.Grd->columnWidth(0)) - 1630.0 / 765) < 0.02);
        }
    }
    void suprimir_data()
    {
        QTest::addColumn<int>("arriba");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<int>("filasDespues");
        // Number 9 has taxed-amount lines: it goes in every period and the list is reloaded.
        QTest::newRow("con lineas de gravado") << 1 << "9" << 3;
        // Number 10 of Proveedor Uno has none: the last delete affects no row, the list stays.
        QTest::newRow("sin lineas de gravado") << 0 << "10" << 4;
    }
    void suprimir()
    {
        QFETCH(int, arriba);
        QFETCH(QString, numero);
        QFETCH(int, filasDespues);
        frmMAIN &w = Abrir(kAlfa);
        for (int i = 0; i < arriba; ++i)
            QTest::keyClick(w.Grd, Qt::Key_Up);
        QCOMPARE(w.Grd->TextMatrix(w.Grd->Row(), 2), numero);
        QTest::keyClick(w.Grd, Qt::Key_Delete);

        const QString clave = QStringLiteral("PRVSNRCUIT = '%1' and IVCSNROFAC = '%2'").arg(kUno, numero);
        QCOMPARE((QList<long>{libro->Contar("IVC", clave), libro->Contar("IVC_DetIVA", clave),
                              libro->Contar("IVC_Gravado", clave), libro->Contar("IVC_DetIngBrutos"),
                              libro->Contar("IVC")}),
                 (QList<long>{0, 0, 0, 1, numero == QLatin1String("9") ? 4L : 5L}));
        QCOMPARE(w.Grd->Rows(), filasDespues);
        QVERIFY(libro->Mensajes().mostrados.isEmpty());
        // The totals labels keep their text until the next refresh.
        QCOMPARE(Totales(w), kTotalesNov);
    }
    // Esc and F12 check the print fields alike; Esc saves valid ones and closes, F12 prints nothing
    // when they do not serve and else prints with the values on screen, saving nothing.
    void camposImpresion_data()
    {
        QTest::addColumn<int>("tecla");
        QTest::addColumn<QString>("fuente");
        QTest::addColumn<QString>("lineas");
        QTest::addColumn<QString>("mensaje");
        QTest::addColumn<int>("hojas"); // printed
        const int esc = Qt::Key_Escape, f12 = Qt::Key_F12;
        QTest::newRow("Esc, fuente") << esc << "abc" << "30" << "El campo FUENTE debe ser Númerico" << 0;
        QTest::newRow("Esc, lineas") << esc << "10" << "3x" << "El campo LINEAS x HOJA debe ser Númerico" << 0;
        QTest::newRow("Esc, validos") << esc << "10,5" << "40" << "" << 0;
        QTest::newRow("F12, fuente") << f12 << "abc" << "30" << "El campo FUENTE debe ser Númerico" << 0;
        // Lines per page beyond a 16-bit integer end the key quietly.
        QTest::newRow("F12, lineas fuera de 16 bits") << f12 << "9" << "40000" << "" << 0;
        QTest::newRow("F12, cero lineas: la trampa del libro")
            << f12 << "9" << "0" << "División por cero\r\n\r\n11 - Seccion [MORLAxDLL.modGBPROC.ImprimirLibro]" << 0;
        // Printed at the usual 9 points and 30 lines a page (typed again here), and at others.
        QTest::newRow("F12, los valores de inicio") << f12 << "9" << "30" << "" << 1;
        QTest::newRow("F12, otros valores") << f12 << "10,5" << "13" << "" << 2;
    }
    void camposImpresion()
    {
        QFETCH(int, tecla);
        QFETCH(QString, fuente);
        QFETCH(QString, lineas);
        QFETCH(QString, mensaje);
        QFETCH(int, hojas);
        frmMAIN &w = Abrir(kAlfa);
        Campo(w.txtIMPFuente, fuente);
        Campo(w.txtIMPLinxHoja, lineas);
        QTest::keyClick(w.txtIMPLinxHoja, Qt::Key(tecla));

        const MensajesGuion &m = libro->Mensajes();
        QCOMPARE(m.mostrados.size(), mensaje.isEmpty() ? 0 : 1);
        if (!mensaje.isEmpty())
            QCOMPARE(m.Ultimo() + QString::number(m.UltimoEstilo()), mensaje + QString::number(vb::vbCritical));
        QCOMPARE(impresora.hojas.size(), hojas);
        const bool cerrada = tecla == Qt::Key_Escape && mensaje.isEmpty();
        QCOMPARE(w.isVisible(), !cerrada);
        const Ajustes &a = libro->S().ajustes;
        QCOMPARE(a.Leer("FACTURACION", "IVC", "CFGIMPFUEN") + u'|' + a.Leer("FACTURACION", "IVC", "CFGIMPLIXP"),
                 cerrada ? fuente + u'|' + lineas : QStringLiteral("|"));
        // Closed: the book let go; the session keeps the values read at start.
        QVERIFY(!cerrada || (!libro->S().dbLibro && libro->S().ImpFuente == 9.0));
        if (hojas == 0)
            return;
        // One document, the header a point larger, and the focus where it was.
        const double puntos = QString(fuente).replace(u',', u'.').toDouble();
        QCOMPARE(QPair(impresora.hojas[0][1].puntos, impresora.hojas[0][3].puntos), QPair(puntos + 1, puntos));
        QCOMPARE(impresora.documentos, 1);
        QVERIFY(impresora.Textos().contains(QStringLiteral("TOTAL 387,05")));
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(w.txtIMPLinxHoja));
    }
    // F10 writes the period's spreadsheet and the two tax-authority files where the save dialog
    // (owned by the main window) says; cancelled, nothing.
    void f10()
    {
        const QString dir = libro->Carpeta() + QStringLiteral("salida/");
        QDir().mkpath(dir);
        DialogoGuion dialogo;
        libro->S().dialogo = &dialogo;
        frmMAIN &w = Abrir(kAlfa);
        QTest::keyClick(w.Grd, Qt::Key_F10);
        QCOMPARE(QDir(dir).entryList(QDir::Files).size() + libro->Mensajes().mostrados.size(), 0);

        dialogo.respuesta = dir + QStringLiteral("noviembre");
        QTest::keyClick(w.Grd, Qt::Key_F10);
        QCOMPARE(dialogo.pedidos.size(), 2);
        QCOMPARE(dialogo.pedidos[1].propietario, &w);
        // The three files of the session's period (their bytes are checked with the export).
        QCOMPARE(QDir(dir).entryList(QDir::Files),
                 (QStringList{"noviembre COMPRAS ALICUOTAS.txt", "noviembre COMPRAS COMPRBTE.txt", "noviembre.xls"}));
        QCOMPARE(QString::number(Leer(dir + "noviembre COMPRAS COMPRBTE.txt").count('\n')) + libro->Mensajes().Ultimo(),
                 QStringLiteral("3Archivos Generados"));
    }
    // F6: company, month and year chosen with the keyboard and confirmed; F6 again left with Esc
    // changes nothing.
    void f6()
    {
        frmMAIN &w = Abrir(kAlfa, QStringLiteral("01/10/2026"));
        AlAbrirse<frmOpciones>([](frmOpciones &f) {
            QTest::keyClick(f.cboUSR, Qt::Key_Down); // Alfa SA -> Beta SRL
            QTest::keyClick(f.cboMES, Qt::Key_End);
            Campo(f.TxtYear, QStringLiteral("2005"));
            QTest::keyClick(f.TxtYear, Qt::Key_F11);
        });
        QTest::keyClick(w.Grd, Qt::Key_F6);
        const Sesion &s = libro->S();
        // Remembered; the total refreshed, but the company and period labels are set only at start.
        QCOMPARE((QStringList{s.CuitUsuario, s.NombreUsuario, s.ConIva, s.DomicilioUsuario, s.EmailUsuario,
                              s.PeriodoDesde, QString::number(s.MesPeriodo), Recordado("USRSNROCUIT"),
                              Recordado("IVCFPERIOD"), w.LbTot->text(), w.lbUSRSNOMBR->text()}),
                 (QStringList{kBeta, "Beta SRL", "N", "Calle 1", "info@empresa.com.ar", "01/12/2005", "12", kBeta,
                              "01/12/2005", "121,00", "Alfa SA"}));
        QCOMPARE(FilasGrilla(w), QStringList{QStringLiteral("02/12/05|A|1|30-70000000-2|Proveedor Dos|100,00|00,00|21,00|0|121,00|21")});

        AlAbrirse<frmOpciones>([](frmOpciones &f) {
            QTest::keyClick(f.cboUSR, Qt::Key_Up);
            QTest::keyClick(f.cboUSR, Qt::Key_Escape);
        });
        QTest::keyClick(w.Grd, Qt::Key_F6);
        QVERIFY(s.Cancelado && w.isVisible());
        QCOMPARE(s.CuitUsuario + u' ' + Recordado("IVCFPERIOD") + u' ' + QString::number(w.Grd->Rows()),
                 kBeta + QStringLiteral(" 01/12/2005 2"));
    }

private:
    // The main window started on the company and period given and shown.
    frmMAIN &Abrir(const QString &cuit, const QString &periodo = kNov)
    {
        libro->Recordar(cuit, periodo);
        ventana = std::make_unique<frmMAIN>(libro->S());
        ArrancarYMostrar(*ventana);
        return *ventana;
    }
    QStringList FilasGrilla(const frmMAIN &w) const
    {
        QStringList out;
        for (int r = 1; r < w.Grd->Rows(); ++r)
            for (int col = 0; col < w.Grd->Cols(); ++col)
                out << (col ? out.takeLast() + u'|' : QString()) + w.Grd->TextMatrix(r, col);
        return out;
    }
    QString Recordado(const char *clave) const
    {
        return libro->S().ajustes.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QString::fromLatin1(clave));
    }
    // The five total labels: taxed, untaxed, VAT, gross income, total.
    static QString Totales(const frmMAIN &w)
    {
        return QStringList{w.lbTGrav->text(), w.lbTNoGrav->text(), w.lbIva21->text(), w.lbINGBRU->text(), w.LbTot->text()}
            .join(u'|');
    }
    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmMAIN> ventana;
    ImpresoraGrabadora impresora;
};

QTEST_MAIN(TstFrmMain)
#include "tst_frmmain.moc"
