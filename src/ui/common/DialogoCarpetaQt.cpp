#include "ui/common/DialogoCarpetaQt.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

namespace {

class Dialogo : public QFileDialog
{
public:
    using QFileDialog::QFileDialog;

    QString nueva; // a folder named in the name box that does not exist yet

    QLineEdit *CajaNombre() const { return findChild<QLineEdit *>(QStringLiteral("fileNameEdit")); }

protected:
    void showEvent(QShowEvent *e) override
    {
        QFileDialog::showEvent(e);
        if (QLineEdit *caja = CajaNombre(); caja && !caja->text().isEmpty()) {
            caja->setFocus();
            caja->selectAll();
        }
    }

public:
    // The standard dialog refuses a folder that is not there; a new one is what is asked for
    // here, as long as the folder it would go in exists.
    void accept() override
    {
        const QString nombre = CajaNombre() ? CajaNombre()->text().trimmed() : QString();
        if (!nombre.isEmpty()) {
            const QString ruta = QDir::cleanPath(directory().absoluteFilePath(QDir::fromNativeSeparators(nombre)));
            const QFileInfo info(ruta);
            if (!info.exists() && QFileInfo(info.absolutePath()).isDir()) {
                nueva = ruta;
                QDialog::accept();
                return;
            }
        }
        QFileDialog::accept();
    }
};

} // namespace

QString DialogoCarpetaQt::ElegirCarpeta(const QString &titulo, const QString &carpetaInicial,
                                        const QString &nombreInicial, QWidget *propietario)
{
    QString carpeta = QDir::fromNativeSeparators(carpetaInicial);
    if (carpetaInicial.isEmpty() || !QDir(carpeta).exists())
        carpeta = QDir::homePath();

    Dialogo d(propietario, titulo, carpeta);
    d.setOption(QFileDialog::DontUseNativeDialog);
    d.setOption(QFileDialog::ShowDirsOnly);
    d.setFileMode(QFileDialog::Directory);
    d.setAcceptMode(QFileDialog::AcceptOpen);
    if (QLineEdit *caja = d.CajaNombre())
        caja->setText(nombreInicial);
    if (d.exec() != QDialog::Accepted)
        return QString();
    return QDir::toNativeSeparators(d.nueva.isEmpty() ? d.selectedFiles().value(0) : d.nueva);
}
