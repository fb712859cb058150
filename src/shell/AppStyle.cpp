#include "shell/AppStyle.h"
#include <QFontDatabase>
#include <QIcon>
#include <QLibraryInfo>
#include <QProxyStyle>
#include <QTranslator>

namespace shell {
namespace {

/// Fusion without the icons that some desktops put on the buttons of dialogs.
class QuietStyle : public QProxyStyle {
  public:
    QuietStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

/// The texts of the toolkit's own dialogs as they are spelled in Switzerland.
class SwissTranslator : public QTranslator {
  public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* source, const char* disambiguation,
                      int n) const override {
        return QTranslator::translate(context, source, disambiguation, n)
            .replace(QChar(u'ß'), QStringLiteral("ss"));
    }
};

QFont applicationFont() {
    // Families whose figures all have one width, so that amounts stand in columns.
    for (const char* family : {"Segoe UI", "Noto Sans", "Liberation Sans", "DejaVu Sans"})
        if (QFontDatabase::hasFamily(QLatin1String(family)))
            return QFont(QLatin1String(family), 10);
    return QFont(QApplication::font().family(), 10);
}

} // namespace

void applyStyle(QApplication& application) {
    QApplication::setStyle(new QuietStyle);
    QApplication::setFont(applicationFont());
    // Windows of their own, such as a preview, bear it as well.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/tavolino.svg")));
    auto* german = new SwissTranslator(&application);
    if (german->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(german);
}

} // namespace shell
