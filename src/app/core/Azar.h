#pragma once
// A small fixed-seed generator (xorshift): a book generated from the same seed is the same book
// on every machine. The demo book and the benchmarks' large book are drawn from it.

#include <QList>
#include <QtGlobal>
#include <cmath>

struct Azar {
    quint64 s;
    explicit Azar(quint64 semilla = 0x9E3779B97F4A7C15ull) : s(semilla) {}

    quint32 Siguiente()
    {
        s ^= s << 13;
        s ^= s >> 7;
        s ^= s << 17;
        return quint32(s >> 11);
    }
    // An integer from a to b, both included.
    int Entre(int a, int b) { return a + int(Siguiente() % quint32(b - a + 1)); }
    // An amount from min to max in cents, picked among `pasos` even steps of the range.
    double Monto(double min, double max, quint32 pasos = 100000)
    {
        const double d = min + (max - min) * (Siguiente() % pasos) / double(pasos);
        return std::round(d * 100) / 100;
    }
    // One element of a list that is not empty.
    template <typename T> const T &Uno(const QList<T> &l) { return l[Entre(0, int(l.size()) - 1)]; }
};
