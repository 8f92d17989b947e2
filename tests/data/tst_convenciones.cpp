#include "data/Convenciones.h"

#include <QtTest>

class TstConvenciones : public QObject
{
    Q_OBJECT
private slots:
    void format_data()
    {
        QTest::addColumn<QVariant>("valor");
        QTest::addColumn<QString>("patron");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("-0.004 rounds to zero without sign") << QVariant(-0.004) << "00.00" << "00,00";
        QTest::newRow("very big, every digit") << QVariant(1e20) << "00.00" << "100000000000000000000,00";
        QTest::newRow("stored VAT of 13 digits") << QVariant(5000000068049.169) << "00.00" << "5000000068049,17";
        QTest::newRow("text with comma") << QVariant(QStringLiteral("12,5")) << "00.00" << "12,50";
        QTest::newRow("not a number unchanged") << QVariant(QStringLiteral("abc")) << "00.00" << "abc";
        QTest::newRow("integer") << QVariant(qlonglong(210)) << "00.00" << "210,00";
        QTest::newRow("null") << QVariant() << "00.00" << "";
        QTest::newRow("three zeros") << QVariant(7.0) << "000" << "007";
        QTest::newRow("optional digits") << QVariant(0.5) << "#.##" << ",5";
        QTest::newRow("optional decimals dropped") << QVariant(2.0) << "0.##" << "2";
        QTest::newRow("many places") << QVariant(-1.5) << QString(200, u'0') + ".0" << "-" + QString(199, u'0') + "1,5";
        // Dates in the list's, the reports' and the period's patterns are checked through the windows
        // and the reports.
        QTest::newRow("blank in pattern") << QVariant(QDate(2026, 11, 1)) << "mm yyyy" << "11 2026";
        QTest::newRow("text date") << QVariant(QStringLiteral("1/3/2005")) << "dd-mm-yyyy" << "01-03-2005";
        QTest::newRow("iso text, one-digit day") << QVariant(QStringLiteral("2005-03-5")) << "d/m/yyyy" << "5/3/2005";
        QTest::newRow("iso text, impossible day") << QVariant(QStringLiteral("2005-02-30")) << "dd/mm/yy" << "2005-02-30";
        // A year number is read as a date serial: 1990 days after 30/12/1899.
        QTest::newRow("year as serial") << QVariant(1990.0) << "yyyy" << "1905";
        QTest::newRow("not a date unchanged") << QVariant(QStringLiteral("hola")) << "dd-mm-yyyy" << "hola";
        QTest::newRow("serial beyond any date unchanged") << QVariant(1e20) << "dd/mm/yyyy" << "100000000000000000000";
        QTest::newRow("typed digits beyond any date unchanged")
            << QVariant(QStringLiteral("1234567890123456789")) << "dd/mm/yyyy" << "1234567890123456789";
    }
    void format()
    {
        QFETCH(QVariant, valor);
        QFETCH(QString, patron);
        QFETCH(QString, esperado);
        QCOMPARE(conv::Format(valor, patron), esperado);
    }
    // EsNumerico with CDbl ("no": not a number, CDbl throws); numbers shown as QString::number
    // shows them.
    void cdbl_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("comma") << "10,5" << "10.5";
        QTest::newRow("point") << "10.5" << "10.5";
        QTest::newRow("blanks and sign") << "  -3,25 " << "-3.25";
        QTest::newRow("leading separator") << ",5" << "0.5";
        QTest::newRow("blanks") << "   " << "no";
        QTest::newRow("two separators") << "1.234,5" << "no";
        QTest::newRow("exponent") << "1e5" << "no";
        QTest::newRow("sign alone") << "-" << "no";
        QTest::newRow("inner blank") << "1 2" << "no";
    }
    void cdbl()
    {
        QFETCH(QString, texto);
        QFETCH(QString, esperado);
        QCOMPARE(conv::EsNumerico(texto), esperado != QLatin1String("no"));
        if (esperado == QLatin1String("no"))
            QVERIFY_THROWS_EXCEPTION(conv::ErrorConversion, conv::CDbl(texto));
        else
            QCOMPARE(QString::number(conv::CDbl(texto)), esperado);
    }
    // Val: a number with a dash, blanks inside, a comma that stops, a point, letters, a sign.
    // NumeroATexto: 0, a negative fraction and whole, binary noise, beyond 15 digits, tiny.
    void valYNumeroATexto()
    {
        QCOMPARE((QList<double>{conv::Val("0002-00012345"), conv::Val(" 1 2 3"), conv::Val("12,5"), conv::Val("12.5"),
                                conv::Val("abc"), conv::Val("-4x")}),
                 (QList<double>{2, 123, 12, 12.5, 0, -4}));
        QCOMPARE((QStringList{conv::NumeroATexto(0), conv::NumeroATexto(-0.5), conv::NumeroATexto(-3),
                              conv::NumeroATexto(0.1 + 0.2), conv::NumeroATexto(1e20), conv::NumeroATexto(0.0000001)}),
                 (QStringList{"0", "-0,5", "-3", "0,3", "100000000000000000000", "0,0000001"}));
    }
    void redondeoEnCadaMagnitud()
    {
        // Near halves at every power of ten: a value written with a 5 in the third decimal goes up
        // (away from zero), one just under stays; a formatted amount read back and formatted again
        // never moves a cent.
        qlonglong potencia = 1;
        for (int e = 0; e <= 12; ++e, potencia *= 10) {
            for (const auto &[centavos, esperado, sube] :
                 {std::tuple{"125", "13", 0}, {"124", "12", 0}, {"995", "00", 1}}) {
                const double v = conv::CDbl(QString::number(potencia) + u',' + QLatin1String(centavos));
                const QString f = conv::Format(v, QStringLiteral("00.00"));
                const QString entero = QString::number(potencia + sube);
                QCOMPARE(f, (e == 0 ? u'0' + entero : entero) + u',' + QLatin1String(esperado));
                QCOMPARE(conv::Format(-v, QStringLiteral("00.00")), u'-' + f);
                QCOMPARE(conv::Format(conv::CDbl(f), QStringLiteral("00.00")), f);
            }
        }
        // From 1e13 a double holds no third decimal exactly; eighths are exact.
        QCOMPARE(conv::Format(1e13 + 0.125, QStringLiteral("00.00")) + u' ' + conv::Format(1e13 + 0.375, QStringLiteral("00.00")),
                 QStringLiteral("10000000000000,13 10000000000000,38"));
    }
    void textoAFecha_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<QDate>("hoy");
        const QDate h2026(2026, 11, 21), h2035(2035, 6, 1);
        QTest::newRow("dd/mm/yyyy") << "15/03/2005" << QDate(2005, 3, 15) << h2026;
        QTest::newRow("two-digit year 46, today + 20") << "1/1/46" << QDate(2046, 1, 1) << h2026;
        QTest::newRow("two-digit year 47, today - 79") << "1/1/47" << QDate(1947, 1, 1) << h2026;
        QTest::newRow("two-digit year 55 in 2035") << "1/1/55" << QDate(2055, 1, 1) << h2035;
        QTest::newRow("two-digit year 56 in 2035") << "1/1/56" << QDate(1956, 1, 1) << h2035;
        QTest::newRow("month 13 swaps") << "1-13-2005" << QDate(2005, 1, 13) << h2026;
        QTest::newRow("dots") << "01.02.2003" << QDate(2003, 2, 1) << h2026;
        QTest::newRow("no leading zero") << "01/3/2005" << QDate(2005, 3, 1) << h2026;
        QTest::newRow("iso") << "2005-03-15" << QDate(2005, 3, 15) << h2026;
        QTest::newRow("both over 12") << "13/13/2005" << QDate() << h2026;
        QTest::newRow("31 February") << "31/02/2005" << QDate() << h2026;
        QTest::newRow("empty") << "" << QDate() << h2026;
    }
    void textoAFecha()
    {
        QFETCH(QString, texto);
        QFETCH(QDate, fecha);
        QFETCH(QDate, hoy);
        conv::FijarHoy(hoy);
        QCOMPARE(conv::TextoAFecha(texto).value_or(QDate()), fecha);
        QCOMPARE(conv::EsFecha(texto), fecha.isValid());
    }
    void textos()
    {
        // Only blanks are trimmed, not tabs.
        QCOMPARE((QStringList{conv::Trim(QStringLiteral("\t x  ")), conv::FechaLarga(QDate(2026, 11, 21)),
                              conv::NombreMes(9), conv::NombreMes(13), conv::Texto(QVariant(QDate(2005, 3, 1)))}),
                 (QStringList{"\t x", "sábado, 21 de noviembre de 2026", "SEPTIEMBRE", "", "01/03/2005"}));
    }
};

QTEST_APPLESS_MAIN(TstConvenciones)
#include "tst_convenciones.moc"
