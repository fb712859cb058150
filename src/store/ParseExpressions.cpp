#include "store/StatementParser.h"
#include <algorithm>

namespace store {
namespace {

using namespace Qt::StringLiterals;

Expression binary(const QString& word, Expression left, Expression right) {
    Expression result{Expression::Binary, word};
    result.parts.push_back(std::move(left));
    result.parts.push_back(std::move(right));
    return result;
}

/// Long chains stay flat.
Expression chained(const QString& word, Expression left, Expression right) {
    if (left.kind != Expression::Binary || left.word != word)
        return binary(word, std::move(left), std::move(right));
    left.parts.push_back(std::move(right));
    return left;
}

bool isComparing(const Token& token) {
    return token.kind == Token::Symbol && !token.text.isEmpty() &&
           QStringView(u"=<>!").contains(token.text.front());
}

} // namespace

std::shared_ptr<Expression> StatementParser::optional(const char16_t* word) {
    return takeWord(word) ? std::make_shared<Expression>(expression()) : nullptr;
}

std::vector<Expression> StatementParser::list() {
    std::vector<Expression> result;
    do
        result.push_back(expression());
    while (takeSymbol(u","));
    return result;
}

Expression StatementParser::expression() {
    Expression result = conjunction();
    while (takeWord(u"OR"))
        result = chained(u"OR"_s, std::move(result), conjunction());
    return result;
}

Expression StatementParser::conjunction() {
    Expression result = negation();
    while (takeWord(u"AND"))
        result = chained(u"AND"_s, std::move(result), negation());
    return result;
}

Expression StatementParser::negation() {
    if (!takeWord(u"NOT"))
        return comparison();
    Expression result{Expression::Not};
    result.parts.push_back(negation());
    return result;
}

Expression StatementParser::comparison() {
    Expression result = sum();
    for (;;) {
        if (isComparing(look())) {
            const QString word = m_tokens[m_at++].text;
            result = binary(word, std::move(result), sum());
            continue;
        }
        const bool negated = isWord(u"NOT");
        const size_t ahead = negated ? 1 : 0;
        if (!isWord(u"LIKE", ahead) && !isWord(u"IN", ahead) && !isWord(u"BETWEEN", ahead) &&
            !isWord(u"IS", ahead))
            return result;
        m_at += ahead;
        result = comparedBy(std::move(result), negated);
    }
}

Expression StatementParser::comparedBy(Expression left, bool negated) {
    Expression result;
    result.negated = negated;
    result.parts.push_back(std::move(left));
    if (takeWord(u"LIKE")) {
        result.kind = Expression::Like;
        result.parts.push_back(sum());
        if (takeWord(u"ESCAPE"))
            result.parts.push_back(sum());
    } else if (takeWord(u"BETWEEN")) {
        result.kind = Expression::Between;
        result.parts.push_back(sum());
        needWord(u"AND");
        result.parts.push_back(sum());
    } else if (takeWord(u"IS")) {
        result.kind = Expression::Is;
        result.negated = takeWord(u"NOT");
        result.parts.push_back(sum());
    } else {
        needWord(u"IN");
        needSymbol(u"(");
        result.kind = Expression::In;
        if (isWord(u"SELECT") || isWord(u"WITH"))
            result.query = select();
        else if (!isSymbol(u")"))
            for (Expression& item : list())
                result.parts.push_back(std::move(item));
        needSymbol(u")");
    }
    return result;
}

Expression StatementParser::sum() {
    Expression result = term();
    while (isSymbol(u"+") || isSymbol(u"-")) {
        const QString word = m_tokens[m_at++].text;
        result = binary(word, std::move(result), term());
    }
    return result;
}

Expression StatementParser::term() {
    Expression result = joinedText();
    while (isSymbol(u"*") || isSymbol(u"/") || isSymbol(u"%")) {
        const QString word = m_tokens[m_at++].text;
        result = binary(word, std::move(result), joinedText());
    }
    return result;
}

Expression StatementParser::joinedText() {
    Expression result = signedValue();
    while (takeSymbol(u"&") || takeSymbol(u"||"))
        result = chained(u"||"_s, std::move(result), signedValue());
    return result;
}

Expression StatementParser::signedValue() {
    if (!isSymbol(u"-") && !isSymbol(u"+"))
        return collated();
    Expression result{Expression::Sign, m_tokens[m_at++].text};
    result.parts.push_back(signedValue());
    return result;
}

Expression StatementParser::collated() {
    Expression result = primary();
    while (takeWord(u"COLLATE")) {
        Expression outer{Expression::Collate, name().text};
        outer.parts.push_back(std::move(result));
        result = std::move(outer);
    }
    return result;
}

Expression StatementParser::primary() {
    const Token token = look();
    if (token.kind == Token::Number || token.kind == Token::Text) {
        ++m_at;
        Expression result{token.kind == Token::Number ? Expression::Number : Expression::Text, token.text};
        result.literal = token.literal;
        return result;
    }
    if (takeSymbol(u"("))
        return bracketed();
    if (takeSymbol(u"*"))
        return {Expression::Star};
    if (takeWord(u"NULL"))
        return {Expression::Null};
    if (takeWord(u"True"))
        return {Expression::Truth, u"True"_s};
    if (takeWord(u"False"))
        return {Expression::Truth, u"False"_s};
    if (takeWord(u"CASE"))
        return choice();
    if (takeWord(u"CAST"))
        return cast();
    if (isWord(u"EXISTS") && isSymbol(u"(", 1)) {
        m_at += 2;
        Expression result = bracketed();
        result.kind = Expression::Exists;
        return result;
    }
    return named();
}

/// Behind the opening bracket.
Expression StatementParser::bracketed() {
    Expression result;
    if (isWord(u"SELECT") || isWord(u"WITH") || isWord(u"VALUES")) {
        result.kind = Expression::Query;
        result.query = select();
    } else {
        result.kind = Expression::Group;
        result.parts.push_back(expression());
    }
    needSymbol(u")");
    return result;
}

Expression StatementParser::named() {
    Expression result{Expression::Column};
    result.name = name();
    if (!result.name.bracketed && takeSymbol(u"("))
        return call(result.name.text);
    if (takeSymbol(u".")) {
        result.table = result.name;
        if (takeSymbol(u"*"))
            result.kind = Expression::Star;
        else
            result.name = name();
    }
    return result;
}

Expression StatementParser::call(const QString& function) {
    Expression result{Expression::Call, function};
    result.distinct = takeWord(u"DISTINCT");
    if (!isSymbol(u")"))
        result.parts = list();
    needSymbol(u")");
    return result;
}

Expression StatementParser::choice() {
    Expression result{Expression::Case};
    result.hasOperand = !isWord(u"WHEN");
    if (result.hasOperand)
        result.parts.push_back(expression());
    while (takeWord(u"WHEN")) {
        result.parts.push_back(expression());
        needWord(u"THEN");
        result.parts.push_back(expression());
    }
    result.hasElse = takeWord(u"ELSE");
    if (result.hasElse)
        result.parts.push_back(expression());
    needWord(u"END");
    return result;
}

Expression StatementParser::cast() {
    Expression result{Expression::Cast};
    needSymbol(u"(");
    result.parts.push_back(expression());
    needWord(u"AS");
    result.word = name().text;
    needSymbol(u")");
    return result;
}

} // namespace store
