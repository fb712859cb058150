#include "shell/AppStyle.h"
#include "platform/form/PromptButtons.h"
#include "shell/QuietStyle.h"
#include <QFontDatabase>
#include <QFontInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>

namespace shell {
namespace {

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
    QFont font = QApplication::font();
    // Who chose larger letters for the desktop wants them here as well.
    const double size = qMax(10.0, QFontInfo(font).pointSizeF());
    // Families whose figures all have one width, so that amounts stand in columns.
    for (const char* family : {"Segoe UI", "Noto Sans", "Liberation Sans", "DejaVu Sans"})
        if (QFontDatabase::hasFamily(QLatin1String(family))) {
            font = QFont(QLatin1String(family));
            break;
        }
    font.setPointSizeF(size);
    return font;
}

} // namespace

void applyStyle(QApplication& application) {
    QApplication::setStyle(new QuietStyle);
    QApplication::setFont(applicationFont());
    platform::makeButtonsPrompt(application);
    // Windows of their own, such as a preview, bear it as well.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/tavolino.svg")));
    auto* german = new SwissTranslator(&application);
    if (german->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(german);
}

} // namespace shell
