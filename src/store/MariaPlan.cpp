#include "store/MariaPlan.h"
#include <algorithm>
#include <initializer_list>

namespace store {
namespace {

bool has(const Translated& translated, const char* word) {
    return std::any_of(translated.pieces.begin(), translated.pieces.end(),
                       [&](const QByteArray& piece) { return piece.toUpper().contains(word); });
}

/// Texts are parameters, so that each bracket in the pieces is one.
int countRows(const Translated& translated, qsizetype from) {
    int depth = 0;
    int rows = 0;
    for (const QByteArray& piece : translated.pieces) {
        for (const char c : QByteArrayView(piece).sliced(from)) {
            rows += c == '(' && depth == 0 ? 1 : 0;
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        }
        from = 0;
    }
    return rows;
}

} // namespace

MariaPlan::MariaPlan(Translated translation, bool withKey) :
    translated(std::move(translation)), keyed(withKey) {
    const QByteArray start = translated.pieces.front().trimmed().toUpper();
    for (const char* word : {"CREATE ", "DROP ", "ALTER "})
        if (start.startsWith(word))
            kind = Kind::Definition;
    for (const char* word : {"SELECT", "WITH", "("})
        if (start.startsWith(word))
            kind = Kind::Query;
    const qsizetype values = translated.pieces.front().toUpper().indexOf(" VALUES");
    if (!start.startsWith("INSERT INTO ") || values < 0 || has(translated, "SELECT"))
        return;
    kind = Kind::Insert;
    rowsAt = values + qsizetype(sizeof " VALUES" - 1);
    rows = countRows(translated, rowsAt);
}

} // namespace store
