#include "ui/checks/DialogoAbrirQt.h"

#include "ui/common/DialogoGuardarQt.h"

#include <QDir>
#include <QFileDialog>

QString DialogoAbrirQt::Abrir(const QString &titulo, const QList<FiltroArchivo> &filtros,
                              const QString &carpetaInicial, QWidget *propietario)
{
    QStringList lista;
    for (const FiltroArchivo &f : filtros)
        lista << Filtro(f);
    const QString carpeta = QDir(carpetaInicial).exists() ? carpetaInicial : QDir::homePath();
    return QFileDialog::getOpenFileName(propietario, titulo, carpeta, lista.join(QStringLiteral(";;")));
}
