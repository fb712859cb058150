#include "store/Emitter.h"
#include <QHash>
#include <algorithm>

namespace store {
namespace {

using namespace Qt::StringLiterals;

constexpr const char16_t* kGerman = u"utf8mb4_uca1400_nopad_as_ci";

/// A number with a point would be a DECIMAL, which is another one than the DOUBLE of the same digits.
QString numberSql(const QString& digits) {
    constexpr const char16_t* kHighest = u"1.7976931348623157e308";
    bool whole = false;
    digits.toLongLong(&whole);
    if (whole)
        return digits;
    if (qIsInf(digits.toDouble()))
        return (digits.startsWith(u'-') ? u"-"_s : QString()) + QString::fromUtf16(kHighest);
    return digits.contains(u'e', Qt::CaseInsensitive) ? digits : digits + u"e0"_s;
}

/// A backslash begins an escape in a text.
QString textSql(const QString& text) {
    return u'\'' + QString(text).remove(QChar(u'\0')).replace(u'\\', u"\\\\"_s).replace(u'\'', u"''"_s) +
           u'\'';
}

QString asNumber(const QString& text) {
    const QString trimmed = text.trimmed();
    bool isNumber = false;
    trimmed.toDouble(&isNumber);
    const bool plain = isNumber && !trimmed.contains(u'n', Qt::CaseInsensitive);
    return numberSql(plain ? trimmed : u"9e999"_s);
}

QString numberText(const QString& digits) {
    bool whole = false;
    const qint64 number = digits.toLongLong(&whole);
    if (whole)
        return QString::number(number);
    const QString text = QString::number(digits.toDouble(), 'g', 15);
    return text.contains(u'.') || text.contains(u'e') ? text : text + u".0"_s;
}

QString valueSql(const QString& written, bool isText, Parameter::Form form) {
    using Form = Parameter::Form;
    const bool negative = form == Form::Negative || form == Form::NegativeAsText;
    const QString value = negative ? u'-' + written : written;
    if (form == Form::AsText || form == Form::NegativeAsText)
        return textSql(numberText(value));
    if (form == Form::AsNumber)
        return asNumber(value);
    if (!isText)
        return numberSql(value);
    return textSql(form == Form::Pattern ? QString(value).replace(u'\\', u"\\\\"_s) : value);
}

bool isWhole(ColumnType type) {
    return type == ColumnType::Long || type == ColumnType::YesNo;
}

class MariaEmitter : public Emitter {
  public:
    using Emitter::Emitter;

  private:
    void putQuoted(const QString& name) { put(u'`' + QString(name).replace(u'`', u"``"_s) + u'`'); }

    /// A name in front of a point is one of the FROM clause, spelled as there.
    void putName(const Name& name) override {
        const Source* source = sourceOf(name);
        const bool ofTable = source && source->alias.text.isEmpty();
        if (ofTable)
            putTable(source->table);
        else
            putQuoted(source ? source->alias.text : name.text);
    }

    void putTable(const Name& name) override { putQuoted(m_names.tableName(name.text)); }

    void putNumber(const QString& digits) override { put(numberSql(digits)); }

    void putText(const QString& text) override { put(textSql(text)); }

    void defaultRow() override { put(u"() VALUES ()"); }

    void prepare(Select& select) override {
        if (!m_keyed)
            return;
        Core& core = select.cores.front();
        Item key{Expression{Expression::Column}};
        key.value.name = {u"rowid"_s};
        if (!core.sources.empty()) {
            const Source& source = core.sources.front();
            key.value.name = {m_names.rowKey(source.table.text)};
            key.value.table = source.alias.text.isEmpty() ? source.table : source.alias;
            qualifyStar(core, key.value.table);
        }
        core.items.push_back(key);
        m_result.hiddenColumns = 1;
    }

    /// A bare star stands alone or first.
    static void qualifyStar(Core& core, const Name& table) {
        for (Item& item : core.items)
            if (item.value.kind == Expression::Star && item.value.table.text.isEmpty())
                item.value.table = table;
    }

    /// Without ties LIMIT will do, which stops at the n-th row: WITH TIES reads them all, index or not.
    void limits(const Select& select) override {
        if (select.top >= 0) {
            const bool mayTie = select.top > 0 && !select.order.empty() && !isByKey(select);
            const QString count = QString::number(select.top);
            put(mayTie ? u"FETCH FIRST "_s + count + u" ROWS WITH TIES"_s : u"LIMIT "_s + count);
        }
        Emitter::limits(select);
    }

    /// Whether the order holds the key of the one table.
    bool isByKey(const Select& select) const {
        const Core& core = select.cores.front();
        if (select.cores.size() > 1 || core.sources.size() != 1 || core.sources[0].query ||
            !core.groups.empty())
            return false;
        const QString key = m_names.rowKey(core.sources[0].table.text);
        return std::any_of(select.order.begin(), select.order.end(), [&](const Order& one) {
            return one.value.kind == Expression::Column &&
                   one.value.name.text.compare(key, Qt::CaseInsensitive) == 0;
        });
    }

    Form formBeside(ColumnType type, const Expression& e, bool negative) override {
        if (type == ColumnType::Text && e.kind == Expression::Number)
            return negative ? Form::NegativeAsText : Form::AsText;
        const bool ofNumbers = isWhole(type) || type == ColumnType::Double || type == ColumnType::Date;
        if (ofNumbers && e.kind == Expression::Text)
            return Form::AsNumber;
        return Emitter::formBeside(type, e, negative);
    }

    /// Comparisons are all of one rank here.
    void ranked(const Expression& e) {
        if (!e.isComparison())
            return expression(e);
        put(u"("), expression(e), put(u")");
    }

    void binary(const Expression& e) override {
        if (e.word == u"||"_s)
            return function(u"concat"_s, e.parts);
        const bool whole = isWhole(typeOf(e.parts[0])) && isWhole(typeOf(e.parts[1]));
        if (e.word == u"/"_s && whole)
            return divided(e, u"DIV");
        if (e.word == u"%"_s && !whole)
            return truncated(e.parts[0]), put(u"%"), truncated(e.parts[1]);
        for (size_t i = 0; i < e.parts.size(); ++i) {
            if (i > 0)
                put(e.word);
            e.word == u"AND"_s || e.word == u"OR"_s ? expression(e.parts[i]) : ranked(e.parts[i]);
        }
    }

    void divided(const Expression& e, QStringView word) {
        expression(e.parts[0]), put(word), expression(e.parts[1]);
    }

    void truncated(const Expression& e) { put(u"truncate("), expression(e), put(u", 0)"); }

    void like(const Expression& e) override {
        expression(e.parts[0]);
        put(e.negated ? u"NOT LIKE" : u"LIKE");
        if (e.parts.size() > 2)
            return expression(e.parts[1]), put(u"ESCAPE"), expression(e.parts[2]);
        if (e.parts[1].kind == Expression::Text)
            return putParameter(e.parts[1], Form::Pattern);
        put(u"replace("), expression(e.parts[1]), put(u", '\\\\', '\\\\\\\\')");
    }

    void in(const Expression& e) override {
        if (!e.query && e.parts.size() == 1)
            return put(e.negated ? u"(1 = 1)" : u"(1 = 0)");
        Emitter::in(e);
    }

    void is(const Expression& e) override {
        if (e.parts[1].kind == Expression::Null)
            return Emitter::is(e);
        if (e.negated)
            put(u"NOT");
        put(u"("), ranked(e.parts[0]), put(u"<=>"), ranked(e.parts[1]), put(u")");
    }

    void call(const Expression& e) override {
        const QString name = e.word.toLower();
        const bool several = e.parts.size() > 1;
        if (name == u"sum"_s && isWhole(typeOf(e.parts[0])) && !e.distinct)
            return put(u"CAST("), Emitter::call(e), put(u"AS SIGNED)");
        if (name == u"avg"_s || name == u"total"_s)
            return ofDoubles(e, name);
        static const QHash<QString, QString> kNames = {
            {u"length"_s, u"char_length"_s}, {u"randomblob"_s, u"random_bytes"_s}, {u"iif"_s, u"if"_s}};
        Expression renamed = e;
        renamed.word = name == u"max"_s && several   ? u"greatest"_s
                       : name == u"min"_s && several ? u"least"_s
                                                     : kNames.value(name, e.word);
        Emitter::call(renamed);
    }

    /// An average of whole numbers would be cut off after four digits.
    void ofDoubles(const Expression& e, const QString& name) {
        const bool total = name == u"total"_s;
        put(total ? u"coalesce(sum(" : u"avg(");
        if (e.distinct)
            put(u"DISTINCT");
        ranked(e.parts[0]), put(u"+ 0e0)");
        if (total)
            put(u", 0e0)");
    }

    void cast(const Expression& e) override {
        const bool toText = e.word.contains(u"TEXT"_s, Qt::CaseInsensitive);
        put(u"CAST(");
        if (e.word.contains(u"INT"_s, Qt::CaseInsensitive))
            return truncated(e.parts[0]), put(u"AS SIGNED)");
        expression(e.parts[0]), put(toText ? u"AS CHAR)" : u"AS DOUBLE)");
    }

    /// Numbers would be compared as texts.
    void collate(const Expression& e) override {
        const ColumnType type = typeOf(e.parts[0]);
        const bool isText = type == ColumnType::Text || type == ColumnType::Any;
        expression(e.parts[0]);
        if (isText)
            put(u"COLLATE"), put(QStringView(kGerman));
    }
};

} // namespace

std::unique_ptr<Emitter> mariaEmitter(const QString& sql, const Names& names, bool keyed) {
    return std::make_unique<MariaEmitter>(sql, names, keyed);
}

QByteArray Translated::filled(const std::vector<Literal>& literals) const {
    QByteArray sql = pieces.front();
    for (size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& parameter = parameters[i];
        const bool own = parameter.literal < 0;
        const Literal* literal = own ? nullptr : &literals[size_t(parameter.literal)];
        sql += valueSql(own ? parameter.constant.toText() : literal->text(), own || literal->isText(),
                        parameter.form)
                   .toUtf8();
        sql += pieces[i + 1];
    }
    return sql;
}

} // namespace store
