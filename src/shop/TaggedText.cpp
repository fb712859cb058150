#include "shop/TaggedText.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include <QHash>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

/// Values may overlap: of a text with few tags each record may take nearly all. More than this beyond twice
/// the text itself is no shop's answer.
constexpr qsizetype kOverlap = 16LL * 1024 * 1024;

QChar capital(QChar c) {
    return c >= u'a' && c <= u'z' ? QChar(char16_t(c.unicode() - u'a' + u'A')) : c;
}

} // namespace

TaggedText::TaggedText(QStringView text, const std::vector<QString>& names) :
    m_text(text), m_tags{u"<BESTELLUNGEN>"_s, u"<RECORD>"_s, u"</RECORD>"_s} {
    for (const QString& name : names) {
        m_tags.push_back(u'<' + name + u'>');
        m_tags.push_back(u"</"_s + name + u'>');
    }
    m_places.resize(m_tags.size());
    findTags();
}

/// One walk for all tags: each begins with the one "<" that it holds.
void TaggedText::findTags() {
    QHash<QStringView, int> known;
    qsizetype longest = 0;
    for (size_t tag = 0; tag < m_tags.size(); ++tag) {
        known.insert(m_tags[tag], int(tag));
        longest = std::max(longest, m_tags[tag].size());
    }
    std::vector<QChar> written;
    for (qsizetype at = m_text.indexOf(u'<'); at >= 0; at = m_text.indexOf(u'<', at + 1)) {
        written.assign(1, u'<');
        for (const QChar c : m_text.sliced(at + 1).left(longest - 1)) {
            if (c == u'<')
                break;
            written.push_back(capital(c));
            if (c == u'>')
                break;
        }
        const auto tag = known.constFind(QStringView(written.data(), qsizetype(written.size())));
        if (tag != known.constEnd())
            m_places[size_t(*tag)].all.push_back(at);
    }
}

qsizetype TaggedText::placeOf(int tag) {
    Places& places = m_places[size_t(tag)];
    while (places.next < places.all.size() && places.all[places.next] < m_position)
        ++places.next;
    return places.next < places.all.size() ? places.all[places.next] : -1;
}

bool TaggedText::enterFrame() {
    m_position = placeOf(kFrame);
    return m_position >= 0;
}

bool TaggedText::nextRecord() {
    const bool there = placeOf(kRecord) >= 0;
    m_recordNumber += there ? 1 : 0;
    return there;
}

QString TaggedText::value(int name) {
    const int opening = kFirstValue + 2 * name;
    // Without the opening tag this counts from the place before the text, as the shop's rule does.
    const qsizetype start = placeOf(opening) + m_tags[size_t(opening)].size();
    const qsizetype length = placeOf(opening + 1) - start;
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
    const qsizetype end = placeOf(kRecordEnd);
    if (end < 0)
        fail(u"no end"_s);
    m_position = end + 1;
}

/// The values are a customer's and not for the log.
void TaggedText::fail(const QString& what) const {
    throw common::RunTimeError(
        common::kTypeMismatch, u"Die Antwort des Online Shops ist unvollständig oder fehlerhaft."_s,
        u"record %1 of %2 characters: "_s.arg(m_recordNumber).arg(m_text.size()) + what);
}

} // namespace shop
