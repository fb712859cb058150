#include "shop/TaggedText.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

/// Values may overlap: of a text with few tags each record may take nearly all. More than this beyond twice
/// the text itself is no shop's answer.
constexpr qsizetype kOverlap = 16 * 1024 * 1024;

QString opening(const QString& name) {
    return u'<' + name + u'>';
}

QString closing(const QString& name) {
    return u"</"_s + name + u'>';
}

} // namespace

qsizetype TaggedText::Tag::from(QStringView text, qsizetype position) {
    const bool known = m_searchedFrom >= 0 && (m_place < 0 || m_place >= position);
    if (!known) {
        m_searchedFrom = position;
        m_place = m_matcher.indexIn(text, position);
    }
    return m_place;
}

TaggedText::TaggedText(QStringView text, const std::vector<QString>& names) :
    m_text(text), m_frame(u"<BESTELLUNGEN>"_s), m_record{Tag(u"<RECORD>"_s), Tag(u"</RECORD>"_s)} {
    for (const QString& name : names)
        m_values.push_back({Tag(opening(name)), Tag(closing(name))});
}

bool TaggedText::enterFrame() {
    m_position = m_frame.from(m_text, 0);
    return m_position >= 0;
}

bool TaggedText::nextRecord() {
    const bool there = m_record.opening.from(m_text, m_position) >= 0;
    m_recordNumber += there ? 1 : 0;
    return there;
}

QString TaggedText::value(int name) {
    Pair& tags = m_values[size_t(name)];
    // Without the opening tag this counts from the place before the text, as the shop's rule does.
    const qsizetype start = tags.opening.from(m_text, m_position) + tags.opening.length();
    const qsizetype length = tags.closing.from(m_text, m_position) - start;
    if (length < 0)
        fail(u"no end of value %1"_s.arg(name));
    m_taken += length;
    if (m_taken > 2 * m_text.size() + kOverlap)
        fail(u"the values overlap without end"_s);
    return m_text.sliced(start, length).toString();
}

qint64 TaggedText::wholeNumber(int name) {
    const double read = number(name);
    using Bounds = std::numeric_limits<qint32>;
    if (read != std::floor(read) || read < Bounds::min() || read > Bounds::max())
        fail(u"value %1 is no whole number of 32 bits"_s.arg(name));
    return qint64(read);
}

double TaggedText::number(int name) {
    const auto read = common::parseNumber(value(name));
    if (!read)
        fail(u"value %1 is no number"_s.arg(name));
    return *read;
}

void TaggedText::leaveRecord() {
    const qsizetype end = m_record.closing.from(m_text, m_position);
    if (end < 0)
        fail(u"no end"_s);
    m_position = end + 1;
}

/// The values are a customer's and not for the log.
void TaggedText::fail(const QString& what) const {
    throw common::RunTimeError(
        common::kTypeMismatch, u"Die Antwort des Webshops ist unvollständig oder fehlerhaft."_s,
        u"record %1 of %2 characters: "_s.arg(m_recordNumber).arg(m_text.size()) + what);
}

} // namespace shop
