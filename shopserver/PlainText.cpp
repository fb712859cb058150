#include "shopserver/PlainText.h"

using namespace Qt::StringLiterals;

namespace shop {

QString withoutControls(QString text) {
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control && c != u'\n' && c != u'\r')
            c = u' ';
    return text;
}

QString plainLines(QString text) {
    return withoutControls(text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n'));
}

} // namespace shop
