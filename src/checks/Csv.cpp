#include "checks/Csv.h"

namespace csv {

QString Fila(const QStringList &campos)
{
    QStringList citados;
    citados.reserve(campos.size());
    for (QString c : campos) {
        if (c.contains(u';') || c.contains(u'"') || c.contains(u'\n') || c.contains(u'\r')) {
            c.replace(u'"', QStringLiteral("\"\""));
            c = u'"' + c + u'"';
        }
        citados << c;
    }
    return citados.join(u';') + QStringLiteral("\r\n");
}

} // namespace csv
