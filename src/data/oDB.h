#pragma once
// Database component: one instance per database file. A statement is one text, set with SQL
// and run with CrearRs (rows) or Ejecutar (action). The book files are SQLite databases that
// keep the names and tables of the original Access books.

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <memory>

struct sqlite3;

namespace oDB {

// The error a failing member raises in the calling procedure: its description and number,
// which the procedure's error trap shows (or not) with the location it names.
struct ErrorBD {
    QString descripcion;
    int numero = -2147467259; // the provider's generic failure number
};

// A text value between single quotes, for a statement. A value that holds an apostrophe would
// change the statement: it is refused and the statement fails like any broken one.
QString Q(const QString &valor);

// Client-side recordset: every row is read when it is created, so RecordCount is exact.
// Dates come back as QDate, numbers as double or qlonglong, NULL as a null QVariant.
class Recordset
{
public:
    Recordset() = default;

    bool Abierto() const { return abierto_; }
    bool Eof() const;
    bool Bof() const;
    void MoveNext();
    void MoveFirst();
    long RecordCount() const;
    int CantidadCampos() const { return int(nombres_.size()); }
    QString NombreCampo(int i) const { return nombres_.value(i); }

    // Value of a field of the current row, by name (case-insensitive) or by position.
    QVariant Fields(const QString &nombre) const;
    QVariant Fields(int indice) const;
    QVariant operator()(const QString &nombre) const { return Fields(nombre); }

    // Clip text of the rows from the current one to the end: fields separated by the column
    // delimiter, each row followed by the row delimiter, NULL written as nullExpr.
    QString GetString(const QString &delimCol = QStringLiteral("\t"),
                      const QString &delimFila = QStringLiteral("\r"),
                      const QString &nullExpr = QString());
    void Close();

private:
    friend class clManejo;
    void Exigir() const;
    bool abierto_ = false;
    QStringList nombres_;
    QVector<QVector<QVariant>> filas_;
    qsizetype actual_ = 0;
};

class clManejo
{
public:
    clManejo();
    ~clManejo();
    clManejo(const clManejo &) = delete;
    clManejo &operator=(const clManejo &) = delete;

    // Full connection text; the database file is the path after "Data Source=".
    void setCadenaConexion(const QString &cadena) { cadena_ = cadena; }
    QString CadenaConexion() const { return cadena_; }
    // Opens (or reopens) the file named by the connection text. A missing file is an error
    // naming its path; no file is ever created here.
    bool Conectar();
    bool Conectado() const { return db_ != nullptr; }
    void Desconectar();
    QString Archivo() const { return archivo_; }

    void setSQL(const QString &sql) { sql_ = sql; }
    QString SQL() const { return sql_; }

    // Runs the statement in SQL and hands back its rows positioned on the first one.
    // False when the statement failed or yielded no rows (rs is then closed, or open and empty).
    bool CrearRs(Recordset &rs);
    // Runs the action statement in SQL; the rows it affected. Throws ErrorBD when it fails.
    long Ejecutar();

    // The same statements with the text given at once.
    bool CrearRs(Recordset &rs, const QString &sql) { setSQL(sql); return CrearRs(rs); }
    // CrearRs that tells a failure from no rows: false when the statement yielded none; throws
    // ErrorBD when it failed.
    bool Consultar(Recordset &rs, const QString &sql);
    long Ejecutar(const QString &sql) { setSQL(sql); return Ejecutar(); }

    // A transaction on the connection, for a set of statements that go in all together or not
    // at all: the statements run between Empezar and Confirmar are kept only by Confirmar;
    // Deshacer drops them. Outside a transaction every action commits at once.
    void Empezar();
    void Confirmar();
    void Deshacer();

    // Why the last statement failed (empty after a success).
    QString UltimoError() const { return ultimoError_; }

    // The bare connection, for tools that create the files or measure the engine.
    sqlite3 *Handle() const { return db_; }

    // The tables a file must have to be read as a book; throws ErrorBD naming the file and the
    // first missing table.
    void ExigirTablas(const QStringList &tablas);

    static QString ArchivoDeCadena(const QString &cadena);
    // Opens a SQLite file with the engine's settings and functions; creates it when crear. An
    // existing file that cannot be read as a book is an error naming it.
    static sqlite3 *Abrir(const QString &archivo, bool crear);

private:
    struct Preparada;
    Preparada Preparar();
    QString cadena_;
    QString archivo_;
    QString sql_;
    QString ultimoError_;
    sqlite3 *db_ = nullptr;
};

// Why the engine could not read a file, in the program's words (an engine result code and
// its own message). A code without words of its own gives "error del motor de datos N" and
// the engine's message.
QString MotivoIlegible(int codigo, const QString &mensaje);

// Registers the SQL functions that the statements use (datevalue, format, val, cdbl, right...).
void RegistrarFunciones(sqlite3 *db);

} // namespace oDB
