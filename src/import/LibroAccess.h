#pragma once
// Reading of Microsoft Access books (Jet 3: Access 97; Jet 4: Access 2000 to 2003) through
// mdbtools' libmdb. The file is opened read-only and never changed.
//
// Values come as the file holds them, whatever the machine's locale:
//   text and memo   QString, whole (memos are read in full), a zero-length text kept apart
//                   from NULL
//   date and time   QDateTime in UTC (no time zone is applied, so no day is lost to a
//                   daylight-saving gap)
//   currency        double, from the exact four-decimal text of the file
//   double, single  double, the stored value itself
//   byte, integer, long integer, yes/no   qlonglong
//   decimal         double; replication id QString; binary QByteArray
//   NULL            an invalid QVariant

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <memory>

namespace jet {

// Why a file or a table could not be read; the text names them.
struct ErrorAccess {
    QString descripcion;
};

struct ColumnaAccess {
    QString nombre;
    int tipo = 0;       // libmdb's type code (MDB_TEXT, MDB_MONEY...)
    QString nombreTipo; // as Access names it: "Text", "Currency"...
};

class LibroAccess;

// A table being read row by row, in the order of the file. It shares its book's open file:
// the table may outlive the LibroAccess it came from, and the file is closed when the last of
// them goes.
class TablaAccess
{
public:
    ~TablaAccess();
    TablaAccess(TablaAccess &&) noexcept;
    TablaAccess(const TablaAccess &) = delete;
    TablaAccess &operator=(const TablaAccess &) = delete;

    QString Nombre() const { return nombre_; }
    const QList<ColumnaAccess> &Columnas() const { return columnas_; }
    // Rows the table's header announces (deleted rows are not counted in it).
    long FilasAnunciadas() const;
    // The next row, one value per column in the order of Columnas(); false at the end.
    // Throws ErrorAccess when a row cannot be read.
    bool Siguiente(QVector<QVariant> &fila);

private:
    friend class LibroAccess;
    struct Datos;
    explicit TablaAccess(std::unique_ptr<Datos> d, const QString &nombre, QList<ColumnaAccess> columnas);
    std::unique_ptr<Datos> d_;
    QString nombre_;
    QList<ColumnaAccess> columnas_;
};

class LibroAccess
{
public:
    // Opens the file read-only. Throws ErrorAccess naming it when it is not an Access book or
    // cannot be read.
    explicit LibroAccess(const QString &ruta);
    ~LibroAccess();
    LibroAccess(const LibroAccess &) = delete;
    LibroAccess &operator=(const LibroAccess &) = delete;

    QString Ruta() const { return ruta_; }
    // "Jet 3" or "Jet 4" (also "ACE 12" and later for the newer files libmdb reads).
    QString Version() const;
    // The user tables, in the order of the file's catalogue.
    QStringList Tablas() const;
    // The table of that name, matched without regard to case; throws ErrorAccess naming the
    // table and the file when there is none.
    TablaAccess Tabla(const QString &nombre);

private:
    friend class TablaAccess;
    struct Datos;
    std::shared_ptr<Datos> d_; // shared with the tables given out
    QString ruta_;
};

} // namespace jet
