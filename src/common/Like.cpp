#include "common/Like.h"

namespace common {
namespace {

/// `set` is what stands between the brackets. A hyphen at either end stands for itself.
bool inSet(QChar c, QStringView set) {
    const bool none = set.startsWith(u'!');
    if (none)
        set = set.mid(1);
    bool found = false;
    for (qsizetype i = 0; i < set.size() && !found; ++i) {
        if (i + 2 < set.size() && set[i + 1] == u'-') {
            found = c >= set[i] && c <= set[i + 2];
            i += 2;
        } else {
            found = c == set[i];
        }
    }
    return found != none;
}

/// Length of the pattern's first element, which stands for one character.
qsizetype elementLength(QStringView pattern) {
    const qsizetype end = pattern[0] == u'[' ? pattern.indexOf(u']', 1) : -1;
    return end < 0 ? 1 : end + 1;
}

bool fits(QChar c, QStringView element) {
    if (element.size() > 1)
        return inSet(c, element.mid(1, element.size() - 2));
    return element[0] == u'?' || (element[0] == u'#' ? c >= u'0' && c <= u'9' : c == element[0]);
}

} // namespace

bool like(QStringView text, QStringView pattern) {
    qsizetype t = 0, p = 0;
    // Where to take up again when what follows the last "*" does not fit: one character further on.
    qsizetype starPattern = -1, starText = 0;
    while (true) {
        if (p < pattern.size() && pattern[p] == u'*') {
            starPattern = ++p;
            starText = t;
            continue;
        }
        if (t == text.size() && p == pattern.size())
            return true;
        if (t < text.size() && p < pattern.size()) {
            const qsizetype length = elementLength(pattern.mid(p));
            if (fits(text[t], pattern.mid(p, length))) {
                ++t;
                p += length;
                continue;
            }
        }
        if (starPattern < 0 || starText >= text.size())
            return false;
        p = starPattern;
        t = ++starText;
    }
}

} // namespace common
