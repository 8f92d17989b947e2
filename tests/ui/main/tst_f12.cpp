#include "Inicio.h"
#include "common/ImpresoraGrabadora.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/LibroImpreso.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/frmOpciones.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

namespace {
const QString kAlfa = QStringLiteral("20-22222222-2");
const QString kUno = QStringLiteral("30-70000000-1");
const QString kNov = QStringLiteral("01/11/2026");
} // namespace

// F12 on the main window prints the period ledger with the print fields as they are on screen.
class TstF12 : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void imprimeConLosValoresDePantalla();
    void camposQueNoSirven_data();
    void camposQueNoSirven();

private:
    void Escribir(QLineEdit *txt, const QString &texto);
    std::unique_ptr<LibroDePrueba> libro;
    ImpresoraGrabadora impresora;
};

void TstF12::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Empresa(kAlfa, QStringLiteral("Alfa SA"));
    libro->Proveedor(kUno, QStringLiteral("Proveedor Uno"));
    libro->Factura(kAlfa, kUno, kNov, QStringLiteral("03/11/2026"), QStringLiteral("B"), QStringLiteral("0001-00000010"), 100, 10.5, 21, 0);
    libro->Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"), QStringLiteral("0001-00000009"), 200, 0, 42, 2.5);
    libro->LineaIVA(kAlfa, kUno, QStringLiteral("0001-00000009"), 1, 21, QStringLiteral("Iva del 21:"), 42);
    libro->LineaIB(kAlfa, kUno, QStringLiteral("0001-00000009"), 1, 1.25, QStringLiteral("IIBB"), 2.5);
    libro->Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"), QStringLiteral("0001-00000011"), 5, 0, 1.05, 5);
    libro->Recordar(kAlfa, kNov);
    impresora = ImpresoraGrabadora();
    libro->S().impresora = &impresora;
}

void TstF12::cleanup() { libro.reset(); }

void TstF12::Escribir(QLineEdit *txt, const QString &texto)
{
    txt->setFocus();
    QTest::keyClick(txt, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(txt, Qt::Key_Backspace);
    QTest::keyClicks(txt, texto);
}

void TstF12::imprimeConLosValoresDePantalla()
{
    frmMAIN w(libro->S());
    ArrancarYMostrar(w);
    QTest::keyClick(w.Grd, Qt::Key_F12);
    // The settings read at start: 9 points, 30 lines a page.
    QCOMPARE(impresora.documentos, 1);
    QCOMPARE(impresora.hojas.size(), 1);
    QCOMPARE(impresora.hojas[0][1].puntos, 10.0);
    QCOMPARE(impresora.hojas[0][3].puntos, 9.0);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(w.Grd));

    Escribir(w.txtIMPFuente, QStringLiteral("10,5"));
    Escribir(w.txtIMPLinxHoja, QStringLiteral("13"));
    impresora = ImpresoraGrabadora();
    QTest::keyClick(w.txtIMPLinxHoja, Qt::Key_F12);

    QCOMPARE(impresora.documentos, 1);
    QCOMPARE(impresora.FontName(), QStringLiteral("Courier New"));
    // 18 lines of text at 13 a page: 10 and 8 body lines.
    QCOMPARE(impresora.hojas.size(), 2);
    QCOMPARE(impresora.hojas[0].size(), 3 + 10 + 1);
    QCOMPARE(impresora.hojas[1].size(), 3 + 8 + 1);
    const auto &hoja = impresora.hojas[0];
    QCOMPARE(hoja[1].texto, QStringLiteral("ALFA SA - CUIT: 20-22222222-2") + QString(56, u' ') +
                                QStringLiteral(" Desde: 01/11/2026 hasta 30/11/2026"));
    QCOMPARE(hoja[1].puntos, 11.5);
    QCOMPARE(hoja[3].puntos, 10.5);
    QCOMPARE(hoja.last().texto, QString(136, u' ') + QStringLiteral("Pagina 1 de 2"));
    // The invoice of number 9 comes before 10 and 11 of the same date; its lines follow it.
    const QStringList todo = impresora.Textos();
    const qsizetype nueve = todo.indexOf(QRegularExpression(QStringLiteral("05/11/2026    A      0001-00000009 30-70000000 Proveedor Uno .*")));
    QVERIFY(nueve > 0);
    QVERIFY(todo[nueve + 1].contains(QStringLiteral("detalle Ing Brutos --> 1,25% IIBB")));
    QVERIFY(todo[nueve + 2].contains(QStringLiteral("detalle IVA -->   21% Iva del 21:")));
    QVERIFY(todo[nueve + 3].startsWith(QStringLiteral("05/11/2026    A      0001-00000011")));
    QVERIFY(todo.contains(QStringLiteral("TOTAL 387,05")));

    // Nothing saved, the window stays, the focus where it was.
    QCOMPARE(libro->S().ajustes.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN")), QString());
    QCOMPARE(libro->S().ajustes.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPLIXP")), QString());
    QVERIFY(w.isVisible());
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(w.txtIMPLinxHoja));
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
}

void TstF12::camposQueNoSirven_data()
{
    QTest::addColumn<QString>("fuente");
    QTest::addColumn<QString>("lineas");
    QTest::addColumn<QString>("mensaje");
    QTest::newRow("fuente") << "abc" << "30" << "El campo FUENTE debe ser Númerico";
    // Lines per page beyond a 16-bit integer end the key quietly.
    QTest::newRow("lineas fuera de 16 bits") << "9" << "40000" << "";
    QTest::newRow("cero lineas: la trampa del libro") << "9" << "0"
        << "División por cero\r\n\r\n11 - Seccion [MORLAxDLL.modGBPROC.ImprimirLibro]";
}

void TstF12::camposQueNoSirven()
{
    QFETCH(QString, fuente);
    QFETCH(QString, lineas);
    QFETCH(QString, mensaje);
    frmMAIN w(libro->S());
    ArrancarYMostrar(w);
    Escribir(w.txtIMPFuente, fuente);
    Escribir(w.txtIMPLinxHoja, lineas);
    QTest::keyClick(w.txtIMPLinxHoja, Qt::Key_F12);

    QVERIFY(impresora.hojas.isEmpty());
    if (mensaje.isEmpty()) {
        QVERIFY(libro->Mensajes().mostrados.isEmpty());
    } else {
        QCOMPARE(libro->Mensajes().mostrados.size(), 1);
        QCOMPARE(libro->Mensajes().Ultimo(), mensaje);
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
    }
    QVERIFY(w.isVisible());
}

QTEST_MAIN(TstF12)
#include "tst_f12.moc"
