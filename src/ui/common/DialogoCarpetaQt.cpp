#include "ui/common/DialogoCarpetaQt.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

namespace {

class Dialogo : public QFileDialog
{
public:
    using QFileDialog::QFileDialog;

    QString nueva; // a folder named in the name box that does not exist yet

    QLineEdit *CajaNombre() const { return findChild<QLineEdit *>(QStringLiteral("fileNameEdit")); }

    // The folder a name typed in the name box would be, when it is not there yet and the
    // folder it would go in exists; otherwise the empty text.
    QString Nueva() const
    {
        const QString nombre = CajaNombre() ? CajaNombre()->text().trimmed() : QString();
        if (nombre.isEmpty())
            return QString();
        const QString ruta = QDir::cleanPath(directory().absoluteFilePath(QDir::fromNativeSeparators(nombre)));
        const QFileInfo info(ruta);
        return !info.exists() && QFileInfo(info.absolutePath()).isDir() ? ruta : QString();
    }

    // The standard dialog greys its Choose button for a folder that is not there: it stays
    // usable for a new one. Run after the dialog's own update, which it corrects.
    void Habilitar()
    {
        auto *botones = findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        if (QPushButton *elegir = botones ? botones->button(QDialogButtonBox::Open) : nullptr;
            elegir && !Nueva().isEmpty())
            elegir->setEnabled(true);
    }

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
        nueva = Nueva();
        if (!nueva.isEmpty()) {
            QDialog::accept();
            return;
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
    if (QLineEdit *caja = d.CajaNombre()) {
        QObject::connect(caja, &QLineEdit::textChanged, &d, [&d] { d.Habilitar(); }, Qt::QueuedConnection);
        caja->setText(nombreInicial);
    }
    QObject::connect(&d, &QFileDialog::directoryEntered, &d, [&d] { d.Habilitar(); }, Qt::QueuedConnection);
    if (d.exec() != QDialog::Accepted)
        return QString();
    return QDir::toNativeSeparators(d.nueva.isEmpty() ? d.selectedFiles().value(0) : d.nueva);
}
