#include "ui/common/DialogoGuardarQt.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

namespace {

class Dialogo : public QFileDialog
{
public:
    using QFileDialog::QFileDialog;

    QLineEdit *CajaNombre() const { return findChild<QLineEdit *>(QStringLiteral("fileNameEdit")); }

protected:
    // Once shown, the name box has the focus with its whole text selected, so the first key
    // typed replaces the initial text.
    void showEvent(QShowEvent *e) override
    {
        QFileDialog::showEvent(e);
        if (QLineEdit *caja = CajaNombre()) {
            caja->setFocus();
            caja->selectAll();
        }
    }

public:
    void accept() override
    {
        // A name of blanks only is no name: the dialog stays open.
        if (QLineEdit *caja = CajaNombre(); caja && caja->text().trimmed().isEmpty())
            return;
        QFileDialog::accept();
    }
};

} // namespace

QString Filtro(const FiltroArchivo &f)
{
    if (f.descripcion.contains(u'(' + f.patron + u')'))
        return f.descripcion;
    return f.descripcion + QStringLiteral(" (") + f.patron + u')';
}

QString DialogoGuardarQt::GuardarComo(const QString &titulo, const QList<FiltroArchivo> &filtros,
                                      const QString &carpetaInicial, const QString &nombreInicial,
                                      QWidget *propietario)
{
    QString carpeta = QDir::fromNativeSeparators(carpetaInicial);
    if (carpetaInicial.isEmpty() || !QDir(carpeta).exists())
        carpeta = alternativa_.isEmpty() ? QDir::homePath() : alternativa_;

    Dialogo d(propietario, titulo, carpeta);
    d.setOption(QFileDialog::DontUseNativeDialog);
    d.setOption(QFileDialog::DontConfirmOverwrite);
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setFileMode(QFileDialog::AnyFile);
    QStringList nombres;
    for (const FiltroArchivo &f : filtros)
        nombres << Filtro(f);
    d.setNameFilters(nombres);
    if (QLineEdit *caja = d.CajaNombre())
        caja->setText(nombreInicial);
    if (d.exec() != QDialog::Accepted)
        return QString();
    return QDir::toNativeSeparators(d.selectedFiles().value(0));
}
