#pragma once
// The company of the printed-ledger tests: "Compañía Ñandú S.R.L.", current with March 2026
// and named in the session as the start-up leaves it.

#include "common/Libro.h"

#include <QString>

inline const QString kEmpresa = QStringLiteral("20111111112");

inline void EmpresaDelLibro(LibroDePrueba &libro)
{
    libro.Empresa(kEmpresa, QStringLiteral("Compañía Ñandú S.R.L."));
    libro.Periodo(kEmpresa, QStringLiteral("01/03/2026"));
    libro.S().NombreUsuario = QStringLiteral("Compañía Ñandú S.R.L.");
}
