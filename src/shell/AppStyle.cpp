#include "shell/AppStyle.h"
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QStyleFactory>
#include <QTranslator>

namespace shell {
namespace {

QFont applicationFont() {
    // Families whose figures all have one width, so that amounts stand in columns.
    for (const char* family : {"Segoe UI", "Noto Sans", "Liberation Sans", "DejaVu Sans"})
        if (QFontDatabase::hasFamily(QLatin1String(family)))
            return QFont(QLatin1String(family), 10);
    return QFont(QApplication::font().family(), 10);
}

} // namespace

void applyStyle(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(applicationFont());
    auto* german = new QTranslator(&application);
    if (german->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(german);
}

} // namespace shell
