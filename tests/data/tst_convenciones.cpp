#include "data/Convenciones.h"

#include <QtTest>

class TstConvenciones : public QObject
{
    Q_OBJECT
private slots:
    void format_data();
    void format();
    void numerico_data();
    void numerico();
    void val_data();
    void val();
    void numeroATexto_data();
    void numeroATexto();
    void textoAFecha_data();
    void textoAFecha();
    void textos();
};

void TstConvenciones::format_data()
{
    QTest::addColumn<QVariant>("valor");
    QTest::addColumn<QString>("patron");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("0") << QVariant(0.0) << "00.00" << "00,00";
    QTest::newRow("-5") << QVariant(-5.0) << "00.00" << "-05,00";
    QTest::newRow("-0.004 rounds to zero without sign") << QVariant(-0.004) << "00.00" << "00,00";
    QTest::newRow("half up 2.675") << QVariant(2.675) << "00.00" << "02,68";
    QTest::newRow("half 0.125") << QVariant(0.125) << "00.00" << "00,13";
    QTest::newRow("half negative") << QVariant(-1.005) << "00.00" << "-01,01";
    QTest::newRow("half of fourteen digits") << QVariant(12345678901.235) << "00.00" << "12345678901,24";
    QTest::newRow("fourteen digits keep their cents") << QVariant(123456789012.34) << "00.00" << "123456789012,34";
    QTest::newRow("very big, every digit") << QVariant(1e20) << "00.00" << "100000000000000000000,00";
    QTest::newRow("text with comma") << QVariant(QStringLiteral("12,5")) << "00.00" << "12,50";
    QTest::newRow("not a number unchanged") << QVariant(QStringLiteral("abc")) << "00.00" << "abc";
    QTest::newRow("integer") << QVariant(qlonglong(210)) << "00.00" << "210,00";
    QTest::newRow("null") << QVariant() << "00.00" << "";
    QTest::newRow("three zeros") << QVariant(7.0) << "000" << "007";
    QTest::newRow("optional digits") << QVariant(0.5) << "#.##" << ",5";
    QTest::newRow("optional decimals dropped") << QVariant(2.0) << "0.##" << "2";
    QTest::newRow("optional decimals kept") << QVariant(-2.5) << "0.##" << "-2,5";
    QTest::newRow("many places") << QVariant(-1.5) << QString(200, u'0') + ".0" << "-" + QString(199, u'0') + "1,5";
    const QVariant d(QDate(2005, 3, 15));
    QTest::newRow("dd/mm/yy") << d << "dd/mm/yy" << "15/03/05";
    QTest::newRow("dd/mm/yyyy") << d << "dd/mm/yyyy" << "15/03/2005";
    QTest::newRow("dd-mm-yyyy") << d << "dd-mm-yyyy" << "15-03-2005";
    QTest::newRow("mm/yyyy") << d << "mm/yyyy" << "03/2005";
    QTest::newRow("blank in pattern") << QVariant(QDate(2026, 11, 1)) << "mm yyyy" << "11 2026";
    QTest::newRow("text date") << QVariant(QStringLiteral("1/3/2005")) << "dd-mm-yyyy" << "01-03-2005";
    QTest::newRow("iso text") << QVariant(QStringLiteral("2005-03-15")) << "dd/mm/yy" << "15/03/05";
    QTest::newRow("iso text, one-digit day") << QVariant(QStringLiteral("2005-03-5")) << "d/m/yyyy" << "5/3/2005";
    QTest::newRow("iso text, impossible day") << QVariant(QStringLiteral("2005-02-30")) << "dd/mm/yy" << "2005-02-30";
    // A year number is read as a date serial: 1990 days after 30/12/1899.
    QTest::newRow("year as serial") << QVariant(1990.0) << "yyyy" << "1905";
    QTest::newRow("not a date unchanged") << QVariant(QStringLiteral("hola")) << "dd-mm-yyyy" << "hola";
}

void TstConvenciones::format()
{
    QFETCH(QVariant, valor);
    QFETCH(QString, patron);
    QFETCH(QString, esperado);
    QCOMPARE(conv::Format(valor, patron), esperado);
}

void TstConvenciones::numerico_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<bool>("es");
    QTest::addColumn<double>("valor");
    QTest::newRow("comma") << "10,5" << true << 10.5;
    QTest::newRow("point") << "10.5" << true << 10.5;
    QTest::newRow("blanks and sign") << "  -3,25 " << true << -3.25;
    QTest::newRow("leading separator") << ",5" << true << 0.5;
    QTest::newRow("blanks") << "   " << false << 0.0;
    QTest::newRow("letters") << "abc" << false << 0.0;
    QTest::newRow("two separators") << "1.234,5" << false << 0.0;
    QTest::newRow("exponent") << "1e5" << false << 0.0;
    QTest::newRow("sign alone") << "-" << false << 0.0;
    QTest::newRow("inner blank") << "1 2" << false << 0.0;
}

void TstConvenciones::numerico()
{
    QFETCH(QString, texto);
    QFETCH(bool, es);
    QFETCH(double, valor);
    QCOMPARE(conv::EsNumerico(texto), es);
    if (es)
        QCOMPARE(conv::CDbl(texto), valor);
    else
        QVERIFY_THROWS_EXCEPTION(conv::ErrorConversion, conv::CDbl(texto));
}

void TstConvenciones::val_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<double>("valor");
    QTest::newRow("number with dash") << "0002-00012345" << 2.0;
    QTest::newRow("blanks inside") << " 1 2 3" << 123.0;
    QTest::newRow("comma stops") << "12,5" << 12.0;
    QTest::newRow("point") << "12.5" << 12.5;
    QTest::newRow("letters") << "abc" << 0.0;
    QTest::newRow("negative") << "-4x" << -4.0;
}

void TstConvenciones::val()
{
    QFETCH(QString, texto);
    QFETCH(double, valor);
    QCOMPARE(conv::Val(texto), valor);
}

void TstConvenciones::numeroATexto_data()
{
    QTest::addColumn<double>("n");
    QTest::addColumn<QString>("texto");
    QTest::newRow("10.5") << 10.5 << "10,5";
    QTest::newRow("0") << 0.0 << "0";
    QTest::newRow("-0.5") << -0.5 << "-0,5";
    QTest::newRow("negative whole") << -3.0 << "-3";
    QTest::newRow("binary noise") << 0.1 + 0.2 << "0,3";
    QTest::newRow("beyond 15 digits, written out") << 1e20 << "100000000000000000000";
    QTest::newRow("tiny, written out") << 0.0000001 << "0,0000001";
}

void TstConvenciones::numeroATexto()
{
    QFETCH(double, n);
    QFETCH(QString, texto);
    QCOMPARE(conv::NumeroATexto(n), texto);
}

void TstConvenciones::textoAFecha_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QDate>("fecha");
    QTest::newRow("dd/mm/yyyy") << "15/03/2005" << QDate(2005, 3, 15);
    QTest::newRow("two-digit year 05") << "15/03/05" << QDate(2005, 3, 15);
    QTest::newRow("two-digit year 29") << "1/1/29" << QDate(2029, 1, 1);
    QTest::newRow("two-digit year 30") << "1/1/30" << QDate(1930, 1, 1);
    QTest::newRow("month 13 swaps") << "1-13-2005" << QDate(2005, 1, 13);
    QTest::newRow("dots") << "01.02.2003" << QDate(2003, 2, 1);
    QTest::newRow("no leading zero") << "01/3/2005" << QDate(2005, 3, 1);
    QTest::newRow("iso") << "2005-03-15" << QDate(2005, 3, 15);
    QTest::newRow("both over 12") << "13/13/2005" << QDate();
    QTest::newRow("31 February") << "31/02/2005" << QDate();
    QTest::newRow("words") << "mañana" << QDate();
    QTest::newRow("empty") << "" << QDate();
}

void TstConvenciones::textoAFecha()
{
    QFETCH(QString, texto);
    QFETCH(QDate, fecha);
    QCOMPARE(conv::TextoAFecha(texto).value_or(QDate()), fecha);
    QCOMPARE(conv::EsFecha(texto), fecha.isValid());
}

void TstConvenciones::textos()
{
    // Only blanks are trimmed, not tabs.
    QCOMPARE(conv::Trim(QStringLiteral("\t x  ")), QStringLiteral("\t x"));
    QCOMPARE(conv::FechaLarga(QDate(2026, 11, 21)), QStringLiteral("sábado, 21 de noviembre de 2026"));
    QCOMPARE(conv::NombreMes(9), QStringLiteral("SEPTIEMBRE"));
    QCOMPARE(conv::NombreMes(13), QString());
    QCOMPARE(conv::Texto(QVariant(QDate(2005, 3, 1))), QStringLiteral("01/03/2005"));
    QCOMPARE(conv::ALatin1(QStringLiteral("PEÑA")), QByteArray("PE\xD1" "A"));
    // A character outside Latin-1 is one "?", even outside the basic plane.
    QCOMPARE(conv::ALatin1(QStringLiteral("a€b\U0001F600c")), QByteArray("a?b?c"));
}

QTEST_APPLESS_MAIN(TstConvenciones)
#include "tst_convenciones.moc"
