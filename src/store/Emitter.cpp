#include "store/Emitter.h"
#include <QScopedValueRollback>
#include <algorithm>

namespace store {

using namespace Qt::StringLiterals;

/// The tables of a query are in sight while it is written.
struct Scope {
    Scope(Emitter& emitter, const std::vector<Source>& sources) : m_emitter(emitter) {
        m_emitter.m_scopes.push_back(&sources);
    }

    ~Scope() { m_emitter.m_scopes.pop_back(); }

    Emitter& m_emitter;
};

std::optional<bool> truthOf(const Expression& e) {
    if (e.kind == Expression::Truth)
        return e.word == u"True"_s;
    if (e.kind == Expression::Number)
        return e.word.toDouble() != 0;
    return e.kind == Expression::Sign && e.parts[0].kind == Expression::Number ? truthOf(e.parts[0])
                                                                               : std::nullopt;
}

bool isLiteral(const Expression& e, Expression::Kind kind) {
    return e.kind == kind || (e.kind == Expression::Sign && e.parts[0].kind == kind);
}

Translated Emitter::run(Statement statement) {
    if (statement.verb == Statement::Selects) {
        prepare(*statement.select);
        select(*statement.select);
    } else if (statement.verb == Statement::Inserts) {
        insertion(statement);
    } else if (statement.verb == Statement::Updates) {
        update(statement);
    } else {
        deletion(statement);
    }
    m_result.pieces.push_back(m_piece.toUtf8());
    noteFixed();
    return std::move(m_result);
}

void Emitter::put(QStringView text) {
    const QChar last = m_piece.isEmpty() ? QChar() : m_piece.back();
    const bool glued = text.startsWith(u')') || text.startsWith(u',') || text.startsWith(u'.') ||
                       last == u'(' || last == u'.';
    if (m_begun && !glued)
        m_piece += u' ';
    m_piece += text;
    m_begun = true;
}

void Emitter::putText(const QString& text) {
    put(u'\'' + QString(text).replace(u'\'', u"''"_s) + u'\'');
}

/// What was put together from several has lost its place among the literals.
void Emitter::putParameter(const Expression& e, Form form) {
    Parameter parameter{e.literal, form, {}};
    if (e.literal < 0)
        parameter.constant = literalText(e.word, form);
    m_result.parameters.push_back(std::move(parameter));
    put(u"");
    m_result.pieces.push_back(m_piece.toUtf8());
    m_piece.clear();
}

/// Literals that are no parameter are part of the text.
void Emitter::noteFixed() {
    Shape shape;
    readShape(m_sql, shape);
    std::vector<bool> isBound(shape.literals.size());
    for (const Parameter& parameter : m_result.parameters)
        if (parameter.literal >= 0)
            isBound[size_t(parameter.literal)] = true;
    for (size_t i = 0; i < isBound.size(); ++i)
        if (!isBound[i])
            m_result.fixed.emplace_back(int(i), shape.literals[i].written.toString());
}

void Emitter::operand(const Expression& e, ColumnType beside) {
    const bool negative = e.kind == Expression::Sign && e.word == u"-"_s;
    if (e.kind == Expression::Number || (e.kind == Expression::Text && m_bound))
        putParameter(e, formBeside(beside, e, false));
    else if (negative && e.parts[0].kind == Expression::Number)
        putParameter(e.parts[0], formBeside(beside, e.parts[0], true));
    else
        expression(e);
}

void Emitter::list(const std::vector<Expression>& parts, size_t from, const char16_t* between) {
    for (size_t i = from; i < parts.size(); ++i) {
        if (i > from)
            put(QStringView(between));
        expression(parts[i]);
    }
}

void Emitter::function(const QString& name, const std::vector<Expression>& parts) {
    put(name + u'(');
    list(parts);
    put(u")");
}

void Emitter::withWord(const char16_t* word, const std::shared_ptr<Expression>& e, bool bound) {
    if (!e)
        return;
    const QScopedValueRollback keep(m_bound, bound);
    put(QStringView(word));
    expression(*e);
}

void Emitter::insertion(const Statement& statement) {
    const std::vector<Source> none{statement.table};
    const Scope scope(*this, none);
    put(u"INSERT INTO");
    putTable(statement.table.table);
    if (!statement.columns.empty())
        names(statement.columns);
    statement.select ? select(*statement.select) : defaultRow();
}

void Emitter::names(const std::vector<Name>& columns) {
    put(u"(");
    for (const Name& one : columns) {
        if (&one != &columns.front())
            put(u",");
        putName(one);
    }
    put(u")");
}

void Emitter::update(const Statement& statement) {
    const std::vector<Source> tables{statement.table};
    const Scope scope(*this, tables);
    put(u"UPDATE");
    source(statement.table);
    put(u"SET");
    for (const Assignment& one : statement.assignments) {
        if (&one != &statement.assignments.front())
            put(u",");
        assignment(one);
    }
    withWord(u"WHERE", statement.where, true);
}

void Emitter::assignment(const Assignment& one) {
    const QScopedValueRollback keep(m_bound, true);
    Expression target{Expression::Column};
    target.name = one.column;
    putName(one.column);
    put(u"=");
    const auto truth = truthOf(one.value);
    if (truth && typeOf(target) == ColumnType::YesNo)
        put(*truth ? u"-1" : u"0");
    else
        operand(one.value);
}

void Emitter::deletion(const Statement& statement) {
    const std::vector<Source> tables{statement.table};
    const Scope scope(*this, tables);
    put(u"DELETE FROM");
    source(statement.table);
    withWord(u"WHERE", statement.where, true);
}

void Emitter::with(const Select& select) {
    if (select.with.empty())
        return;
    put(select.recursive ? u"WITH RECURSIVE" : u"WITH");
    for (const Named& one : select.with) {
        if (&one != &select.with.front())
            put(u",");
        putName(one.name);
        if (!one.columns.empty())
            names(one.columns);
        put(u"AS");
        put(u"(");
        this->select(*one.query);
        put(u")");
    }
}

void Emitter::select(const Select& select) {
    const QScopedValueRollback keep(m_bound, false);
    with(select);
    for (size_t i = 0; i < select.cores.size(); ++i) {
        if (i > 0)
            put(select.unions[i - 1]);
        core(select.cores[i]);
    }
    const Scope scope(*this, select.cores.front().sources);
    for (const Order& key : select.order) {
        put(&key == &select.order.front() ? u"ORDER BY" : u",");
        expression(key.value);
        if (key.down)
            put(u"DESC");
    }
    limits(select);
}

void Emitter::limits(const Select& select) {
    withWord(u"LIMIT", select.limit, false);
    withWord(u"OFFSET", select.offset, false);
}

void Emitter::core(const Core& core) {
    if (!core.rows.empty())
        return rows(core);
    const Scope scope(*this, core.sources);
    put(core.distinct ? u"SELECT DISTINCT" : u"SELECT");
    for (const Item& item : core.items) {
        if (&item != &core.items.front())
            put(u",");
        expression(item.value);
        if (!item.alias.text.isEmpty())
            put(u"AS"), putName(item.alias);
    }
    for (const Source& one : core.sources) {
        put(one.join.isEmpty() ? QStringView(u"FROM") : one.join);
        source(one);
        withWord(u"ON", one.on, true);
    }
    withWord(u"WHERE", core.where, true);
    if (!core.groups.empty())
        put(u"GROUP BY");
    list(core.groups);
    withWord(u"HAVING", core.having, true);
}

void Emitter::rows(const Core& core) {
    const QScopedValueRollback keep(m_bound, true);
    for (const auto& row : core.rows) {
        put(&row == &core.rows.front() ? u"VALUES" : u",");
        put(u"(");
        for (const Expression& value : row) {
            if (&value != &row.front())
                put(u",");
            operand(value);
        }
        put(u")");
    }
}

void Emitter::source(const Source& source) {
    if (source.query) {
        put(u"(");
        select(*source.query);
        put(u")");
    } else if (source.isFunction) {
        function(source.table.text, source.arguments);
    } else {
        putTable(source.table);
    }
    if (!source.alias.text.isEmpty())
        put(u"AS"), putName(source.alias);
}

void Emitter::expression(const Expression& e) {
    switch (e.kind) {
    case Expression::Number:
        return putNumber(e.word);
    case Expression::Text:
        return m_bound ? putParameter(e) : putText(e.word);
    case Expression::Truth:
        return put(*truthOf(e) ? u"-1" : u"0");
    case Expression::Null:
        return put(u"NULL");
    case Expression::Column:
        return column(e);
    case Expression::Star:
        if (!e.table.text.isEmpty())
            putName(e.table), put(u".");
        return put(u"*");
    case Expression::Sign:
        return put(e.word), expression(e.parts[0]);
    case Expression::Not:
        return put(u"NOT"), expression(e.parts[0]);
    case Expression::Binary:
        return e.isComparison() ? comparison(e) : binary(e);
    case Expression::Like:
        return like(e);
    case Expression::Between: {
        const ColumnType type = typeOf(e.parts[0]);
        expression(e.parts[0]), put(e.negated ? u"NOT BETWEEN" : u"BETWEEN");
        return operand(e.parts[1], type), put(u"AND"), operand(e.parts[2], type);
    }
    case Expression::In:
        return in(e);
    case Expression::Is:
        return is(e);
    case Expression::Call:
        return call(e);
    case Expression::Case:
        return choice(e);
    case Expression::Cast:
        return cast(e);
    case Expression::Collate:
        return collate(e);
    case Expression::Exists:
        put(u"EXISTS");
        [[fallthrough]];
    case Expression::Group:
    case Expression::Query:
        put(u"(");
        e.query ? select(*e.query) : expression(e.parts[0]);
        return put(u")");
    }
}

void Emitter::column(const Expression& e) {
    if (!e.table.text.isEmpty())
        putName(e.table), put(u".");
    const auto table = e.name.text.compare(u"rowid"_s, Qt::CaseInsensitive) == 0 ? tableOf(e) : std::nullopt;
    table ? putName({m_names.rowKey(*table), false}) : putName(e.name);
}

/// "flag = True", "flag = 1" and "flag = -1" are one condition: whatever is not 0 is true.
bool Emitter::yesNo(const Expression& e) {
    if (e.word != u"="_s && e.word != u"<>"_s && e.word != u"!="_s)
        return false;
    for (const size_t at : {0, 1}) {
        const auto truth = truthOf(e.parts[1 - at]);
        if (!truth || e.parts[at].kind != Expression::Column || typeOf(e.parts[at]) != ColumnType::YesNo)
            continue;
        expression(e.parts[at]);
        put(*truth == (e.word == u"="_s) ? u"<> 0" : u"= 0");
        return true;
    }
    return false;
}

void Emitter::comparison(const Expression& e) {
    if (yesNo(e))
        return;
    // "1 = 1" stays, for the planner.
    const bool bound = !isLiteral(e.parts[0], Expression::Number);
    if (e.parts[0].kind == Expression::Text)
        operand(e.parts[0], typeOf(e.parts[1]));
    else
        expression(e.parts[0]);
    put(e.word);
    bound ? operand(e.parts[1], typeOf(e.parts[0])) : expression(e.parts[1]);
}

void Emitter::binary(const Expression& e) {
    for (size_t i = 0; i < e.parts.size(); ++i) {
        if (i > 0)
            put(e.word);
        expression(e.parts[i]);
    }
}

void Emitter::like(const Expression& e) {
    expression(e.parts[0]);
    put(e.negated ? u"NOT LIKE" : u"LIKE");
    expression(e.parts[1]);
    if (e.parts.size() > 2)
        put(u"ESCAPE"), expression(e.parts[2]);
}

void Emitter::in(const Expression& e) {
    expression(e.parts[0]);
    put(e.negated ? u"NOT IN" : u"IN");
    put(u"(");
    if (e.query)
        select(*e.query);
    const ColumnType type = typeOf(e.parts[0]);
    for (size_t i = 1; i < e.parts.size(); ++i) {
        if (i > 1)
            put(u",");
        operand(e.parts[i], type);
    }
    put(u")");
}

void Emitter::is(const Expression& e) {
    expression(e.parts[0]);
    put(e.negated ? u"IS NOT" : u"IS");
    expression(e.parts[1]);
}

void Emitter::call(const Expression& e) {
    put(e.word + u'(');
    if (e.distinct)
        put(u"DISTINCT");
    list(e.parts);
    put(u")");
}

void Emitter::cast(const Expression& e) {
    put(u"CAST(");
    expression(e.parts[0]);
    put(u"AS"), put(e.word), put(u")");
}

void Emitter::choice(const Expression& e) {
    put(u"CASE");
    size_t i = 0;
    if (e.hasOperand)
        expression(e.parts[i++]);
    for (const size_t end = e.parts.size() - (e.hasElse ? 1 : 0); i < end; i += 2) {
        put(u"WHEN"), expression(e.parts[i]);
        put(u"THEN"), expression(e.parts[i + 1]);
    }
    if (e.hasElse)
        put(u"ELSE"), expression(e.parts.back());
    put(u"END");
}

} // namespace store
