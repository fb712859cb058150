#include "store/MariaCursor.h"
#include "store/MariaCatalogue.h"
#include "store/MariaEngine.h"
#include <charconv>
#include <mysql.h>

namespace store {
namespace {

MariaReading readingOf(const MYSQL_FIELD& field) {
    switch (field.type) {
    case MYSQL_TYPE_TINY:
    case MYSQL_TYPE_SHORT:
    case MYSQL_TYPE_LONG:
    case MYSQL_TYPE_INT24:
    case MYSQL_TYPE_LONGLONG:
    case MYSQL_TYPE_YEAR:
        return MariaReading::Whole;
    case MYSQL_TYPE_DECIMAL:
    case MYSQL_TYPE_NEWDECIMAL:
        // The sum of whole numbers is one.
        return field.decimals == 0 ? MariaReading::Whole : MariaReading::Number;
    case MYSQL_TYPE_FLOAT:
    case MYSQL_TYPE_DOUBLE:
        return MariaReading::Number;
    default:
        return MariaReading::Text;
    }
}

void describe(MariaPlan& plan, st_mysql_res* rows, const MariaCatalogue& catalogue) {
    const unsigned count = mysql_num_fields(rows);
    const MYSQL_FIELD* const fields = mysql_fetch_fields(rows);
    for (unsigned i = 0; i < count; ++i) {
        const MYSQL_FIELD& field = fields[i];
        const ColumnType type =
            catalogue.typeOf(QString::fromUtf8(field.org_table), QString::fromUtf8(field.org_name));
        plan.columns.push_back({QString::fromUtf8(field.name), type});
        plan.readings.push_back(readingOf(field));
    }
    // The row key is the first of the hidden columns and shows as the last visible one.
    plan.columns.resize(plan.columns.size() - size_t(plan.translated.hiddenColumns) + (plan.keyed ? 1 : 0));
}

template <class Number> std::optional<Number> parsed(QByteArrayView text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    return error == std::errc() && end == text.end() ? std::optional(number) : std::nullopt;
}

double numberOf(QByteArrayView text) {
    return parsed<double>(text).value_or(0);
}

} // namespace

MariaCursor::MariaCursor(std::shared_ptr<MariaPlan> plan, MariaResult rows, const MariaCatalogue& catalogue,
                         MariaEngine* streaming) :
    m_plan(std::move(plan)),
    m_rows(std::move(rows)), m_streaming(streaming) {
    if (m_plan->readings.empty() && m_rows)
        describe(*m_plan, m_rows.get(), catalogue);
}

MariaCursor::~MariaCursor() {
    constexpr int kFewRows = 20'000;
    // A few rows are read sooner than a connection is made.
    for (int i = 0; m_streaming && i < kFewRows; ++i)
        if (!mysql_fetch_row(m_rows.get()))
            ended();
    if (!m_streaming)
        return;
    m_streaming->breakStream();
    m_rows.reset();
    m_streaming->streamBroken();
}

void MariaCursor::ended() {
    if (m_streaming)
        m_streaming->streamEnded();
    m_streaming = nullptr;
}

bool MariaCursor::fetch() {
    m_row = m_rows ? mysql_fetch_row(m_rows.get()) : nullptr;
    m_lengths = m_row ? mysql_fetch_lengths(m_rows.get()) : nullptr;
    if (!m_row && m_streaming) {
        MariaEngine* const engine = m_streaming;
        const bool failed = engine->streamFailed();
        if (!failed)
            ended();
        else
            m_streaming = nullptr, m_rows.reset(), engine->throwStreamError();
    }
    return m_row != nullptr;
}

bool MariaCursor::next() {
    return m_isTaken ? ++m_next < m_taken.size() : fetch();
}

void MariaCursor::takeRest() {
    const auto count = m_plan->readings.size();
    bool there = m_row != nullptr;
    if (!there)
        m_taken.emplace_back(count);
    for (there = there || fetch(); there; there = fetch()) {
        Row row(count);
        for (size_t i = 0; i < count; ++i)
            if (m_row[i])
                row[i] = QByteArray(m_row[i], qsizetype(m_lengths[i]));
        m_taken.push_back(std::move(row));
    }
    m_isTaken = true;
}

QByteArrayView MariaCursor::cell(int column) const {
    const auto index = size_t(column);
    if (m_isTaken)
        return m_taken[m_next][index] ? QByteArrayView(*m_taken[m_next][index]) : QByteArrayView();
    return m_row[index] ? QByteArrayView(m_row[index], qsizetype(m_lengths[index])) : QByteArrayView();
}

common::Value MariaCursor::value(int column) const {
    const QByteArrayView text = cell(column);
    const ColumnType type = m_plan->columns[size_t(column)].type;
    if (type == ColumnType::YesNo)
        return !text.isNull() && numberOf(text) != 0;
    if (text.isNull())
        return {};
    const MariaReading reading = m_plan->readings[size_t(column)];
    if (reading == MariaReading::Text)
        return QString::fromUtf8(text);
    if (type == ColumnType::Date)
        return common::Serial{numberOf(text)};
    if (reading == MariaReading::Whole && type != ColumnType::Double)
        if (const auto whole = parsed<qint64>(text))
            return *whole;
    return numberOf(text);
}

} // namespace store
