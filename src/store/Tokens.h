#pragma once
#include <QString>
#include <vector>

namespace store {

struct Token {
    enum Kind { Word, Name, Number, Text, Symbol };

    Kind kind;
    /// Word: as written. Name: without brackets. Text: without quotes. Symbol: one operator or punctuation.
    QString text;
    /// Position among the literals (numbers and texts) of the statement; -1 for anything else.
    int literal = -1;
    /// Where it stands in the statement, the second one behind it.
    qsizetype from = 0, to = 0;

    bool isWord(const char16_t* word) const {
        return kind == Word && text.compare(QStringView(word), Qt::CaseInsensitive) == 0;
    }

    bool isSymbol(const char16_t* symbol) const { return kind == Symbol && text == QStringView(symbol); }
};

/// Splits a statement into words, [names], numbers, 'texts' (a doubled quote is one quote) and symbols.
/// An unfinished text throws common::RunTimeError kSqlFailure.
std::vector<Token> tokenize(const QString& sql);
/// The statement with "?" for each number and text, for the log. Behind a text that does not end nothing is
/// told.
QString withoutValues(const QString& sql);

/// Position of the first such word from `from` on that stands in no brackets; the number of tokens without
/// one.
size_t findClause(const std::vector<Token>& tokens, const char16_t* word, size_t from = 0);

/// A number or text as it stands in a statement; a view on the statement.
struct Literal {
    /// The digits, or what is between the quotes, a doubled quote still doubled.
    QStringView written;
    /// The quote around a text; 0 for a number.
    char16_t quote = 0;

    bool isText() const { return quote != 0; }

    QString text() const;
};

/// A statement without its values: statements that differ in their literals only have the same key.
struct Shape {
    QString key;
    /// In the order of the statement.
    std::vector<Literal> literals;
};

/// Fills `shape`, which keeps its memory from use to use. Throws like tokenize; the two agree on what a
/// literal is.
void readShape(const QString& sql, Shape& shape);

} // namespace store
