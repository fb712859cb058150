#pragma once
#include "store/Statement.h"
#include "store/Tokens.h"

namespace store {

class StatementParser {
  public:
    explicit StatementParser(const QString& sql);
    Statement run();

  private:
    // Statements
    Statement statement();
    Statement insertion();
    Statement update();
    Statement deletion();
    std::shared_ptr<Select> select();
    void with(Select& into);
    Core core(Select& of);
    Core rows();
    std::vector<Source> sources();
    QString join();
    Source source();
    void order(Select& into);

    // Expressions, from the weakest binding to the strongest
    Expression expression();
    Expression conjunction();
    Expression negation();
    Expression comparison();
    Expression comparedBy(Expression left, bool negated);
    Expression sum();
    Expression term();
    Expression joinedText();
    Expression signedValue();
    Expression collated();
    Expression primary();
    Expression bracketed();
    Expression named();
    Expression call(const QString& function);
    Expression choice();
    Expression cast();
    std::vector<Expression> list();
    std::shared_ptr<Expression> optional(const char16_t* word);

    // Tokens
    const Token& look(size_t ahead = 0) const;

    bool isWord(const char16_t* word, size_t ahead = 0) const { return look(ahead).isWord(word); }

    bool isSymbol(const char16_t* symbol, size_t ahead = 0) const { return look(ahead).isSymbol(symbol); }

    bool isName() const;
    bool takeWord(const char16_t* word);
    bool takeSymbol(const char16_t* symbol);
    void needWord(const char16_t* word);
    void needSymbol(const char16_t* symbol);
    Name name();
    Name alias();
    [[noreturn]] void fail() const;

    const QString& m_sql;
    std::vector<Token> m_tokens;
    size_t m_at = 0;
};

} // namespace store
