#pragma once
// The period check: what the tax authority's importer will reject or miscount in the files
// that F10 writes for one company and period, and which entries look like typing mistakes.
// It reads the period with a few statements over the whole period (the invoices with their
// suppliers, the VAT lines, the gross-income sums) and judges each invoice with the export's
// own pieces (type codes, point of sale and number, 15-digit amounts, the records themselves),
// so that the check and the files cannot tell different stories. It changes nothing.

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace oDB {
class clManejo;
}

namespace verificacion {

// error: the importer rejects or miscounts it; aviso: likely a mistake.
enum class Severidad { error, aviso };
QString TextoSeveridad(Severidad s); // "error" / "aviso"

struct FacturaRevisada;
struct Contexto;

// One rule of the check. mensaje takes the arguments that revisar returns (%1, %2...).
// A rule of the company (porEmpresa) is judged once, with an invoice that only carries the
// company's CUIT; the others once per invoice of the period.
struct Regla {
    const char *id;
    Severidad severidad;
    const char *mensaje;
    const char *accion;
    bool porEmpresa;
    std::optional<QStringList> (*revisar)(const FacturaRevisada &f, const Contexto &c);
};

// The rules, in the order their findings are listed within one invoice.
const std::vector<Regla> &Reglas();
const Regla *BuscarRegla(const QString &id);

struct Hallazgo {
    QString regla;       // the rule's id
    Severidad severidad;
    QDate fecha;         // invoice date (null for a finding of the company)
    QString tipo;
    QString numero;      // IVCSNROFAC as stored
    QString cuit;        // supplier CUIT (the company's for a finding of the company)
    QString nombre;      // supplier name, "desconocido!" when it is not in PRV
    QString mensaje;
    QString accion;
    bool DeEmpresa() const { return fecha.isNull() && numero.isEmpty(); }
};

struct Resultado {
    QList<Hallazgo> hallazgos; // errors first, then by date, number and rule
    int facturas = 0;          // invoices of the period that were checked
    int errores = 0;
    int avisos = 0;
};

// A CUIT as the files need it: eleven digits, a prefix 20, 23, 24, 27, 30, 33 or 34 and the
// check digit of weights 5,4,3,2,7,6,5,4,3,2 (11 - sum mod 11; 11 gives 0, 10 is never valid).
// The reason it is not, or the empty text when it is.
QString MotivoCuitInvalido(const QString &cuit);

// Checks the invoices of company cuitEmpresa entered for the period whose first day is
// periodoDesde (the session's PeriodoDesde). Throws oDB::ErrorBD when the book fails.
Resultado VerificarPeriodo(oDB::clManejo &libro, const QString &cuitEmpresa, const QString &periodoDesde);

} // namespace verificacion
