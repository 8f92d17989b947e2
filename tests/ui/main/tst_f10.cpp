#include "Inicio.h"
#include "common/Archivo.h"
#include "common/DialogoGuion.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/frmOpciones.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QtTest>

namespace {
const QString kAlfa = QStringLiteral("20222222222");
const QString kUno = QStringLiteral("30700000001");
const QString kNov = QStringLiteral("01/11/2026");
} // namespace

// F10 on the main window writes the period's spreadsheet and the two tax-authority files.
class TstF10 : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void exportaElPeriodo();
    void dialogoCancelado();

private:
    QString Dir() const { return libro->Carpeta() + QStringLiteral("salida/"); }
    std::unique_ptr<LibroDePrueba> libro;
    DialogoGuion dialogo;
};

void TstF10::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Empresa(kAlfa, QStringLiteral("Alfa SA"));
    libro->Proveedor(kUno, QStringLiteral("Proveedor Uno"));
    libro->Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"),
                   QStringLiteral("0001-00000009"), 200, 0, 42, 2.5);
    libro->LineaIVA(kAlfa, kUno, QStringLiteral("0001-00000009"), 1, 21, QStringLiteral("Iva del 21:"), 42);
    libro->Recordar(kAlfa, kNov);
    dialogo = DialogoGuion();
    libro->S().dialogo = &dialogo;
    QDir().mkpath(Dir());
}

void TstF10::cleanup() { libro.reset(); }

void TstF10::exportaElPeriodo()
{
    frmMAIN w(libro->S());
    ArrancarYMostrar(w);
    libro->Mensajes().Limpiar();
    dialogo.respuesta = Dir() + QStringLiteral("noviembre");
    QTest::keyClick(w.Grd, Qt::Key_F10);

    QCOMPARE(dialogo.pedidos.size(), 1);
    QCOMPARE(dialogo.pedidos[0].propietario, &w);
    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("Archivos Generados"));
    QCOMPARE(libro->S().ajustes.Leer("KESTREL", "Config", "SepCol"), QStringLiteral("\t"));
    QCOMPARE(Leer(Dir() + "noviembre COMPRAS COMPRBTE.txt"),
             QByteArray("20261105" "001" "00001" "00000000000000000009") + QByteArray(16, ' ') +
                 "80" "00000000030700000001" "Proveedor Uno" + QByteArray(17, ' ') +
                 "000000000024450" "000000000000000" + QByteArray(45, '0') + "000000000000250" +
                 QByteArray(30, '0') + "PES0001000000" "1 " + QByteArray(15, '0') + QByteArray(26, '0') +
                 QByteArray(30, ' ') + QByteArray(15, '0') + "\r\n");
    QCOMPARE(Leer(Dir() + "noviembre COMPRAS ALICUOTAS.txt"),
             QByteArray("001" "00001" "00000000000000000009" "80" "00000000030700000001"
                        "000000000020000" "0005" "000000000004200" "\r\n"));
    const QByteArray xls = Leer(Dir() + "noviembre.xls");
    QVERIFY(xls.startsWith("FECHA\tTIPO\tFAC NRO\tCUIT\tPROVEEDOR\t"));
    QVERIFY(xls.contains("\r\n\"05/11/2026\"\t\"A\"\t\"0001-00000009\"\t\"30700000001\"\t\"Proveedor Uno\"\t"
                         "00.00\t200.00\t02.50\t42.00\t244.50\t\t\r\n"));
    QVERIFY(w.isVisible());
}

void TstF10::dialogoCancelado()
{
    frmMAIN w(libro->S());
    ArrancarYMostrar(w);
    libro->Mensajes().Limpiar();
    dialogo.respuesta = QString();
    QTest::keyClick(w.Grd, Qt::Key_F10);
    QCOMPARE(dialogo.pedidos.size(), 1);
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
    QVERIFY(QDir(Dir()).entryList(QDir::Files).isEmpty());
    QVERIFY(w.isVisible());
}

QTEST_MAIN(TstF10)
#include "tst_f10.moc"
