#include "store/Collation.h"
#include <QChar>
#include <array>

namespace store {
namespace {

constexpr char32_t kTableSize = 0x250;

struct Letter {
    char16_t folded;
    char16_t base;
};

std::array<Letter, kTableSize> makeLetters() {
    std::array<Letter, kTableSize> letters{};
    for (char32_t c = 0; c < kTableSize; ++c) {
        const char32_t folded = QChar::toCaseFolded(c);
        const QString parts = QChar::decomposition(folded);
        const QChar base = parts.isEmpty() ? QChar(char16_t(folded)) : parts.front();
        letters[c] = {char16_t(folded),
                      base.isLetter() || parts.isEmpty() ? base.unicode() : char16_t(folded)};
    }
    letters[0xDF].base = u's';
    return letters;
}

const std::array<Letter, kTableSize> kLetters = makeLetters();

inline unsigned char lowerAscii(unsigned char c) noexcept {
    return c >= 'A' && c <= 'Z' ? c | 0x20 : c;
}

/// The next character; a byte that is no UTF-8 counts as a character of its own.
char32_t nextCharacter(const char*& p, const char* end) noexcept {
    const auto lead = static_cast<unsigned char>(*p++);
    int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    char32_t c = more == 0 ? lead : lead & (0x3F >> more);
    while (more-- > 0 && p < end && (static_cast<unsigned char>(*p) & 0xC0) == 0x80)
        c = (c << 6) | (static_cast<unsigned char>(*p++) & 0x3F);
    return c;
}

inline char32_t folded(char32_t c) noexcept {
    return c < kTableSize ? kLetters[c].folded : QChar::toCaseFolded(c);
}

inline char32_t base(char32_t c) noexcept {
    return c < kTableSize ? kLetters[c].base : QChar::toCaseFolded(c);
}

int compareWithAccents(const char* a, const char* aEnd, const char* b, const char* bEnd) noexcept {
    int accent = 0;
    while (a < aEnd && b < bEnd) {
        const char32_t x = nextCharacter(a, aEnd);
        const char32_t y = nextCharacter(b, bEnd);
        const char32_t xBase = base(x);
        const char32_t yBase = base(y);
        if (xBase != yBase)
            return xBase < yBase ? -1 : 1;
        if (accent == 0 && folded(x) != folded(y))
            accent = folded(x) < folded(y) ? -1 : 1;
    }
    if (a < aEnd)
        return 1;
    return b < bEnd ? -1 : accent;
}

} // namespace

int compareTexts(std::string_view left, std::string_view right) noexcept {
    const char* a = left.data();
    const char* b = right.data();
    const char* const aEnd = a + left.size();
    const char* const bEnd = b + right.size();
    for (; a < aEnd && b < bEnd; ++a, ++b) {
        const auto x = static_cast<unsigned char>(*a);
        const auto y = static_cast<unsigned char>(*b);
        if ((x | y) >= 0x80)
            return compareWithAccents(a, aEnd, b, bEnd);
        const int difference = int(lowerAscii(x)) - int(lowerAscii(y));
        if (difference != 0)
            return difference;
    }
    return a < aEnd ? 1 : b < bEnd ? -1 : 0;
}

int compareTexts(const QString& a, const QString& b) {
    const QByteArray x = a.toUtf8();
    const QByteArray y = b.toUtf8();
    return compareTexts(std::string_view(x.data(), size_t(x.size())),
                        std::string_view(y.data(), size_t(y.size())));
}

bool likeText(std::string_view pattern, std::string_view text, char32_t escape) noexcept {
    const char* p = pattern.data();
    const char* const pEnd = p + pattern.size();
    const char* t = text.data();
    const char* const tEnd = t + text.size();
    const char* afterStar = nullptr;
    const char* retry = nullptr;
    while (t < tEnd) {
        const char* const pStart = p;
        const char* const tStart = t;
        if (p < pEnd) {
            char32_t c = nextCharacter(p, pEnd);
            if (c == U'%') {
                afterStar = p;
                retry = tStart;
                continue;
            }
            const bool literal = escape != 0 && c == escape && p < pEnd;
            if (literal)
                c = nextCharacter(p, pEnd);
            const char32_t d = nextCharacter(t, tEnd);
            if ((!literal && c == U'_') || folded(c) == folded(d))
                continue;
            p = pStart;
        }
        if (!afterStar)
            return false;
        t = retry;
        nextCharacter(t, tEnd);
        retry = t;
        p = afterStar;
    }
    while (p < pEnd && *p == '%')
        ++p;
    return p == pEnd;
}

} // namespace store
