#pragma once
// Expected records of the tax-authority files, written out field by field from their layouts
// (the fixed fields are literal here, never taken from the code under test).

#include <QString>

namespace esperado {

inline QString Z(int n) { return QString(n, u'0'); }
inline QString B(int n) { return QString(n, u' '); }

// Voucher record: date, type code, point of sale, number, 16 blanks, "80", CUIT, name, total,
// untaxed, 45 zeros, gross income, 30 zeros, currency, field 15, 15 zeros, 26 zeros, 30 blanks,
// 15 zeros, CR LF.
inline QString Comprobante(const QString &fecha8, const QString &tipo3, const QString &pv5,
                           const QString &nro20, const QString &cuit20, const QString &nombre30,
                           const QString &total15, const QString &noGrav15, const QString &ib15,
                           const QString &campo15)
{
    return fecha8 + tipo3 + pv5 + nro20 + B(16) + QStringLiteral("80") + cuit20 + nombre30 +
           total15 + noGrav15 + Z(45) + ib15 + Z(30) + QStringLiteral("PES0001000000") + campo15 +
           Z(15) + Z(26) + B(30) + Z(15) + QStringLiteral("\r\n");
}

// Rate record: type code, point of sale, number, "80", CUIT, taxed, rate code, VAT, CR LF.
inline QString Alicuota(const QString &tipo3, const QString &pv5, const QString &nro20,
                        const QString &cuit20, const QString &grav15, const QString &codigo4,
                        const QString &iva15)
{
    return tipo3 + pv5 + nro20 + QStringLiteral("80") + cuit20 + grav15 + codigo4 + iva15 +
           QStringLiteral("\r\n");
}

} // namespace esperado
