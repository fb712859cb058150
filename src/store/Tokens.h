#pragma once
#include <QString>
#include <vector>

namespace store {

struct Token {
    enum Kind { Word, Name, Number, Text, Symbol };

    Kind kind;
    /// Word: as written. Name: without brackets. Text: without quotes. Symbol: one operator or punctuation.
    QString text;

    bool isWord(const char16_t* word) const {
        return kind == Word && text.compare(QStringView(word), Qt::CaseInsensitive) == 0;
    }

    bool isSymbol(const char16_t* symbol) const { return kind == Symbol && text == QStringView(symbol); }
};

/// Splits a statement into words, [names], numbers, 'texts' (a doubled quote is one quote) and symbols.
/// An unfinished text throws common::RunTimeError kSqlFailure.
std::vector<Token> tokenize(const QString& sql);

} // namespace store
