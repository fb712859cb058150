#include "store/Emitter.h"

namespace store {
namespace {

using namespace Qt::StringLiterals;

bool isStar(const Item& item) {
    return item.value.kind == Expression::Star;
}

class SqliteEmitter : public Emitter {
  public:
    using Emitter::Emitter;

  private:
    void putName(const Name& name) override { put(name.bracketed ? quotedName(name.text) : name.text); }

    void prepare(Select& select) override {
        m_outermost = &select;
        m_result.top = select.top;
        Core& core = select.cores.front();
        const std::vector<Item> selected = core.items;
        if (m_keyed)
            addKey(core);
        if (select.top >= 0)
            for (const Order& key : select.order)
                noteOrder(key.value, selected, core.items);
        m_result.hiddenColumns = int(core.items.size() - selected.size());
    }

    void addKey(Core& core) {
        Item key{Expression{Expression::Column}};
        key.value.name = {core.sources.empty() ? u"rowid"_s
                                               : m_names.rowKey(core.sources.front().table.text)};
        core.items.push_back(key);
    }

    /// The order's expressions, as columns of the result: those that are selected anyway, the others added.
    void noteOrder(const Expression& key, const std::vector<Item>& selected, std::vector<Item>& items) {
        const int position = positionOf(key, selected);
        if (position < 0)
            items.push_back({key});
        m_result.keyColumns.push_back(position >= 0 ? position : -int(items.size() - selected.size()));
    }

    static int positionOf(const Expression& key, const std::vector<Item>& selected) {
        if (key.kind == Expression::Number)
            return key.word.toInt() - 1;
        if (key.kind != Expression::Column || !key.table.text.isEmpty())
            return -1;
        for (size_t i = 0; i < selected.size() && !isStar(selected[i]); ++i) {
            const Item& item = selected[i];
            const QString& name = item.alias.text.isEmpty() ? item.value.name.text : item.alias.text;
            if (name.compare(key.name.text, Qt::CaseInsensitive) == 0)
                return int(i);
        }
        return -1;
    }

    void limits(const Select& select) override {
        if (&select != m_outermost && select.top >= 0)
            put(u"LIMIT "_s + QString::number(select.top));
        Emitter::limits(select);
    }

    /// The part in front of the first wildcard bounds the search, so that an index serves.
    void like(const Expression& e) override {
        const Expression& pattern = e.parts[1];
        if (e.parts[0].kind != Expression::Column || pattern.kind != Expression::Text || e.negated ||
            e.parts.size() > 2 || !m_bound)
            return Emitter::like(e);
        const Wildcard wildcard = wildcardOf(pattern.word);
        if (pattern.literal >= 0)
            m_result.patterns.emplace_back(pattern.literal, wildcard);
        if (wildcard == Wildcard::AtStart)
            return Emitter::like(e);
        if (wildcard == Wildcard::None)
            return bounded(e, u"=", Parameter::Form::AsIs);
        put(u"(");
        bounded(e, u">=", Parameter::Form::RangeStart);
        put(u"AND");
        bounded(e, u"<=", Parameter::Form::RangeEnd);
        put(u"AND");
        bounded(e, u"LIKE", Parameter::Form::AsIs);
        put(u")");
    }

    void bounded(const Expression& like, QStringView word, Parameter::Form form) {
        expression(like.parts[0]);
        put(word);
        putParameter(like.parts[1], form);
    }

    const Select* m_outermost = nullptr;
};

} // namespace

std::unique_ptr<Emitter> sqliteEmitter(const QString& sql, const Names& names, bool keyed) {
    return std::make_unique<SqliteEmitter>(sql, names, keyed);
}

} // namespace store
