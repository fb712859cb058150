#pragma once
#include "store/Dialect.h"
#include "store/Statement.h"
#include <optional>

namespace store {

/// Writes a statement anew. What engines have in common is here; each speech overrides what it does
/// differently.
class Emitter {
  public:
    Emitter(const QString& sql, const Names& names, bool keyed) :
        m_sql(sql), m_names(names), m_keyed(keyed) {}

    virtual ~Emitter() = default;
    Translated run(Statement statement);

  protected:
    using Form = Parameter::Form;

    virtual void putName(const Name& name) = 0;

    virtual void putTable(const Name& name) { putName(name); }

    virtual void putNumber(const QString& digits) { put(digits); }

    virtual void putText(const QString& text);

    virtual void defaultRow() { put(u"DEFAULT VALUES"); }

    /// What TOP and the row key add to the query of a statement.
    virtual void prepare(Select& select) = 0;
    /// Behind the order.
    virtual void limits(const Select& select);
    virtual void binary(const Expression& e);
    virtual void like(const Expression& e);
    virtual void in(const Expression& e);
    virtual void is(const Expression& e);
    virtual void call(const Expression& e);
    virtual void cast(const Expression& e);

    virtual void collate(const Expression& e) { expression(e.parts[0]), put(u"COLLATE"), put(e.word); }

    /// The form in which a literal beside something of this type comes.
    virtual Form formBeside(ColumnType, const Expression&, bool negative) {
        return negative ? Form::Negative : Form::AsIs;
    }

    void put(QStringView text);
    /// `e` is a number or text.
    void putParameter(const Expression& e, Form form = Form::AsIs);
    /// A number or text here becomes a parameter.
    void operand(const Expression& e, ColumnType beside = ColumnType::Any);
    void expression(const Expression& e);
    void list(const std::vector<Expression>& parts, size_t from = 0, const char16_t* between = u",");
    void function(const QString& name, const std::vector<Expression>& parts);
    void withWord(const char16_t* word, const std::shared_ptr<Expression>& e, bool bound);
    void select(const Select& select);
    void with(const Select& select);
    void column(const Expression& e);

    /// What a value is, as far as the schema and the expression tell.
    ColumnType typeOf(const Expression& e) const;
    std::optional<QString> tableOf(const Expression& column) const;
    const Source* sourceOf(const Name& qualifier) const;

    const QString& m_sql;
    const Names& m_names;
    const bool m_keyed;
    /// Whether texts become parameters here.
    bool m_bound = false;
    Translated m_result;

  private:
    void insertion(const Statement& statement);
    void update(const Statement& statement);
    void assignment(const Assignment& one);
    void deletion(const Statement& statement);
    void body(const Select& select);
    void core(const Core& core);
    void rows(const Core& core);
    void source(const Source& source);
    void names(const std::vector<Name>& columns);
    void choice(const Expression& e);
    bool yesNo(const Expression& e);
    void comparison(const Expression& e);
    void noteFixed();
    ColumnType typeIn(const Source& source, const QString& column) const;
    ColumnType typeOfCall(const Expression& e) const;

    QString m_piece;
    bool m_begun = false;
    /// The tables in sight, the inner ones last.
    std::vector<const std::vector<Source>*> m_scopes;

    friend struct Scope;
};

/// Whether a literal says yes; nothing for anything else.
std::optional<bool> truthOf(const Expression& e);
bool isLiteral(const Expression& e, Expression::Kind kind);

std::unique_ptr<Emitter> sqliteEmitter(const QString& sql, const Names& names, bool keyed);
std::unique_ptr<Emitter> mariaEmitter(const QString& sql, const Names& names, bool keyed);

} // namespace store
