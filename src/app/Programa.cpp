#include "app/Programa.h"

#include "app/core/Sesion.h"
#include "ui/common/DialogoCarpetaQt.h"
#include "ui/common/DialogoGuardarQt.h"
#include "ui/common/MensajesQt.h"
#include "ui/main/Arranque.h"
#include "ui/main/frmMAIN.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QPointer>
#include <cstdio>

int EjecutarPrograma(int &argc, char **argv, const QString &dirAjustes)
{
    const QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    const QString sinPantalla = !HayPantalla(entorno) ? MensajeSinPantalla() : PantallaInalcanzable(entorno);
    if (!sinPantalla.isEmpty()) {
        std::fprintf(stderr, "%s\n", sinPantalla.toLocal8Bit().constData());
        return 1;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("IVA Compras"));
    // The desktop's entry and icon: the installed icon, or the one beside an uninstalled build.
    QGuiApplication::setDesktopFileName(QStringLiteral("ivacompras"));
    const QString icono =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/icons/hicolor/scalable/apps/ivacompras.svg");
    QApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral("ivacompras"), QFile::exists(icono) ? QIcon(icono) : QIcon()));
    // Qt's own texts (the save dialog, context menus) in Spanish, whatever the machine's
    // language, when the translations are installed.
    QTranslator traduccion;
    if (traduccion.load(QLocale(QLocale::Spanish, QLocale::Argentina), QStringLiteral("qtbase"),
                        QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&traduccion);

    Sesion sesion{Ajustes(dirAjustes)};
    MensajesQt mensajes;
    sesion.mensajes = &mensajes;
    DialogoGuardarQt dialogo;
    sesion.dialogo = &dialogo;
    DialogoCarpetaQt dialogoCarpeta;
    sesion.dialogoCarpeta = &dialogoCarpeta;

    QPointer<frmMAIN> principal = new frmMAIN(sesion);
    principal->setAttribute(Qt::WA_DeleteOnClose);
    // Esc in the company and period window at start-up ends the program at once.
    if (!principal->Form_Load()) {
        delete principal;
        return 0;
    }
    principal->show();
    const int estado = app.exec();
    delete principal;
    return estado;
}
