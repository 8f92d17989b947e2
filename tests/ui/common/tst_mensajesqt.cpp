// The message boxes as shown: wide enough for the title the window manager puts over them (the
// program's name when the box has none) and for their text; Enter answers them.

#include "ui/common/MensajesQt.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

class TstMensajesQt : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QApplication::setApplicationName(QStringLiteral("IVA Compras")); }

    void anchoDelTitulo_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("titulo");
        QTest::newRow("sin título") << "Archivos Generados" << "";
        QTest::newRow("título largo") << "Listo" << "Confirmación de la operación de exportación del período";
    }
    void anchoDelTitulo()
    {
        QFETCH(QString, texto);
        QFETCH(QString, titulo);
        int ancho = 0;
        QTimer::singleShot(0, [&] {
            QTRY_VERIFY(qobject_cast<QMessageBox *>(QApplication::activeModalWidget()));
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ancho = box->width();
            QTest::keyClick(box, Qt::Key_Return);
        });
        MensajesQt m;
        QCOMPARE(m.MsgBox(texto, vb::vbInformation, titulo), int(vb::vbOK));
        QFont negrita = QApplication::font();
        negrita.setBold(true);
        const QString visto = titulo.isEmpty() ? QStringLiteral("IVA Compras") : titulo;
        QVERIFY2(ancho >= QFontMetrics(negrita).horizontalAdvance(visto) + 120, qPrintable(QString::number(ancho)));
    }
};

QTEST_MAIN(TstMensajesQt)
#include "tst_mensajesqt.moc"
