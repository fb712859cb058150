#include "store/Emitter.h"

namespace store {

using namespace Qt::StringLiterals;

namespace {

bool isSame(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool answersTo(const Source& source, const QString& name) {
    return isSame(source.alias.text.isEmpty() ? source.table.text : source.alias.text, name);
}

/// Of a sum or another computation with both.
ColumnType together(ColumnType a, ColumnType b) {
    const auto whole = [](ColumnType type) { return type == ColumnType::Long || type == ColumnType::YesNo; };
    const auto broken = [](ColumnType type) {
        return type == ColumnType::Double || type == ColumnType::Date;
    };
    if (broken(a) || broken(b))
        return ColumnType::Double;
    return whole(a) && whole(b) ? ColumnType::Long : ColumnType::Any;
}

} // namespace

const Source* Emitter::sourceOf(const Name& qualifier) const {
    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope)
        for (const Source& source : **scope)
            if (answersTo(source, qualifier.text))
                return &source;
    return nullptr;
}

/// The table that a column without a qualifier is of, where there is one only.
std::optional<QString> Emitter::tableOf(const Expression& column) const {
    const Source* source =
        column.table.text.isEmpty()
            ? (!m_scopes.empty() && m_scopes.back()->size() == 1 ? &m_scopes.back()->front() : nullptr)
            : sourceOf(column.table);
    return source && !source->query ? std::optional(source->table.text) : std::nullopt;
}

ColumnType Emitter::typeIn(const Source& source, const QString& column) const {
    if (!source.query)
        return m_names.typeOf(source.table.text, column);
    const Core& core = source.query->cores.front();
    for (const Item& item : core.items) {
        const bool all = item.value.kind == Expression::Star;
        const QString& name = item.alias.text.isEmpty() ? item.value.name.text : item.alias.text;
        if (!all && (!isSame(name, column) || item.value.kind != Expression::Column))
            continue;
        for (const Source& inner : core.sources)
            if (item.value.table.text.isEmpty() || answersTo(inner, item.value.table.text))
                if (const auto type = typeIn(inner, all ? column : item.value.name.text);
                    type != ColumnType::Any)
                    return type;
    }
    return ColumnType::Any;
}

ColumnType Emitter::typeOf(const Expression& e) const {
    switch (e.kind) {
    case Expression::Number: {
        bool whole = false;
        e.word.toLongLong(&whole);
        return whole ? ColumnType::Long : ColumnType::Double;
    }
    case Expression::Text:
        return ColumnType::Text;
    case Expression::Column:
        break;
    case Expression::Sign:
    case Expression::Group:
    case Expression::Collate:
        return typeOf(e.parts[0]);
    case Expression::Binary:
        if (e.isComparison() || e.word == u"AND"_s || e.word == u"OR"_s)
            return ColumnType::Long;
        return e.word == u"||"_s ? ColumnType::Text : together(typeOf(e.parts[0]), typeOf(e.parts[1]));
    case Expression::Cast:
        return e.word.contains(u"INT"_s, Qt::CaseInsensitive)    ? ColumnType::Long
               : e.word.contains(u"TEXT"_s, Qt::CaseInsensitive) ? ColumnType::Text
                                                                 : ColumnType::Double;
    case Expression::Call:
        return typeOfCall(e);
    case Expression::Truth:
    case Expression::Not:
    case Expression::Exists:
        return ColumnType::Long;
    default:
        return e.isComparison() ? ColumnType::Long : ColumnType::Any;
    }
    if (!e.table.text.isEmpty()) {
        const Source* source = sourceOf(e.table);
        return source ? typeIn(*source, e.name.text) : ColumnType::Any;
    }
    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope)
        for (const Source& source : **scope)
            if (const ColumnType type = typeIn(source, e.name.text); type != ColumnType::Any)
                return type;
    return ColumnType::Any;
}

ColumnType Emitter::typeOfCall(const Expression& e) const {
    const QString function = e.word.toLower();
    if (function == u"count"_s || function == u"length"_s || function == u"instr"_s)
        return ColumnType::Long;
    if (function == u"avg"_s || function == u"round"_s || function == u"total"_s)
        return ColumnType::Double;
    if (function == u"trim"_s || function == u"lower"_s || function == u"upper"_s || function == u"substr"_s)
        return ColumnType::Text;
    const bool ofItsValues = function == u"sum"_s || function == u"min"_s || function == u"max"_s ||
                             function == u"coalesce"_s || function == u"nullif"_s ||
                             function == u"ifnull"_s || function == u"abs"_s;
    return ofItsValues && !e.parts.empty() ? typeOf(e.parts[0]) : ColumnType::Any;
}

} // namespace store
