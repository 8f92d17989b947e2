#include "reports/AnchoLibro.h"

#include "app/core/Impresora.h"
#include "app/core/Servicios.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "reports/LibroImpreso.h"

#include <cmath>

namespace libro {

bool Cabe(Impresora &imp, const QString &texto, const QString &encabezado, double fuente)
{
    // Fixed-pitch lines: the longest one is the widest.
    QString larga;
    for (const QString &l : CortarLineas(texto))
        if (l.size() > larga.size())
            larga = l;
    const QString pie = PiePagina(99999, 99999);
    const bool cuerpo = imp.HacerLugar(larga, fuente);
    const bool piePagina = imp.HacerLugar(pie, fuente);
    const bool cabecera = imp.HacerLugar(encabezado, fuente + 1);
    return cuerpo && piePagina && cabecera;
}

std::optional<double> FuenteParaElPapel(Sesion &s, Impresora &imp, const QString &texto,
                                        const QString &encabezado, double fuente)
{
    if (Cabe(imp, texto, encabezado, fuente))
        return fuente;
    double entra = 0;
    for (double f = std::ceil(fuente) - 1; f >= 1 && entra == 0; --f)
        if (Cabe(imp, texto, encabezado, f))
            entra = f;
    const QString elegida = conv::NumeroATexto(fuente);
    if (entra == 0) {
        if (s.mensajes)
            s.mensajes->MsgBox(QStringLiteral("El libro no entra en el ancho del papel de la impresora con "
                                              "ninguna fuente. No se imprimió."),
                               vb::vbExclamation);
        return std::nullopt;
    }
    const QString pregunta =
        QStringLiteral("Con la fuente %1 el libro no entra en el ancho del papel de la impresora: "
                       "se perderían columnas.\r\nCon la fuente %2 entra completo.\r\n\r\n"
                       "¿Desea imprimirlo con la fuente %2?")
            .arg(elegida, conv::NumeroATexto(entra));
    if (!s.mensajes || s.mensajes->MsgBox(pregunta, vb::vbYesNo + vb::vbQuestion) != vb::vbYes)
        return std::nullopt;
    return entra;
}

} // namespace libro
