#pragma once
// What the benchmark programs share: the bare-SQLite side of each comparison, the timing of
// both ways, the result line and the program's frame (arguments, the large book, its errors).

#include "GeneradorLibro.h"
#include "app/core/DialogoGuardar.h"
#include "app/core/Servicios.h"
#include "app/core/Sesion.h"

#include <QByteArray>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace banco {

// The save dialog of a measured export: it always answers the same file.
class DialogoFijo : public DialogoGuardar
{
public:
    QString ruta;
    QString GuardarComo(const QString &, const QList<FiltroArchivo> &, const QString &, const QString &,
                        QWidget *) override
    {
        return ruta;
    }
};

// The messages of a measured run, kept to check that it ended as expected.
class MensajesContados : public Mensajes
{
public:
    QStringList textos;
    int MsgBox(const QString &texto, int, const QString &) override
    {
        textos << texto;
        return vb::vbOK;
    }
};

// A session on a measured period whose export (F10) goes to "periodo.xls" of a temporary
// folder, with its settings there too, its save dialog answered and its messages kept.
struct ExportacionMedida {
    QTemporaryDir dir;
    DialogoFijo dialogo;
    MensajesContados mensajes;
    std::unique_ptr<Sesion> s;

    ExportacionMedida(const LibroGrande &libro, const PeriodoMedido &p) : s(AbrirSesion(libro, p))
    {
        s->ajustes = Ajustes(dir.path());
        dialogo.ruta = dir.filePath(QStringLiteral("periodo.xls"));
        s->dialogo = &dialogo;
        s->mensajes = &mensajes;
    }
};

// Runs a statement on the bare SQLite API and keeps every column of every row as text, calling
// porFila after each row; the number of rows. A statement that does not prepare ends the
// program.
template <typename F>
long Directo(sqlite3 *db, const QByteArray &sql, std::vector<std::string> &celdas, F porFila)
{
    sqlite3_stmt *st = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &st, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db));
        std::exit(1);
    }
    long filas = 0;
    const int n = sqlite3_column_count(st);
    while (sqlite3_step(st) == SQLITE_ROW) {
        ++filas;
        for (int c = 0; c < n; ++c) {
            const unsigned char *t = sqlite3_column_text(st, c);
            celdas.emplace_back(t ? reinterpret_cast<const char *>(t) : "", size_t(sqlite3_column_bytes(st, c)));
        }
        porFila(st);
    }
    sqlite3_finalize(st);
    return filas;
}

inline long Directo(sqlite3 *db, const QByteArray &sql, std::vector<std::string> &celdas)
{
    return Directo(db, sql, celdas, [](sqlite3_stmt *) {});
}

// The median of the times of a series of runs (the upper one of the two middle times when
// the runs are even; 0 for none).
double Mediana(std::vector<double> ms);

// The medians, in milliseconds, of the program's way and of the bare SQLite way.
struct Medianas {
    double componente = 0;
    double directo = 0;
};

// Times both ways: one warm-up run of each (pages in the cache, as for a user who has the book
// open), then the runs of both in turn, so that a busy machine weighs on both alike.
Medianas EnTurnos(int corridas, const std::function<void()> &componente, const std::function<void()> &directo);

// The goal a period is measured against: the program's time under ms and the ratio to the
// bare SQLite time under ratio; texto says it as the result line shows it ("< 1 s, ratio < 3").
struct Objetivo {
    double ms;
    double ratio;
    const char *texto;
};

// The result line of a period: company and period, invoices, both medians and their ratio,
// and whether the goal was met when one is given.
void Informar(const PeriodoMedido &p, const char *camino, const Medianas &m, const Objetivo *objetivo);

// The frame of a benchmark program "PROGRAM [FOLDER] [RUNS]": the large book generated or
// reused in FOLDER, its line printed, then medir(libro, runs) (at least 3 runs). An error of the
// book is printed and ends with status 1.
int Principal(int argc, char **argv, int corridasPorDefecto,
              const std::function<void(const LibroGrande &, int)> &medir);

} // namespace banco
