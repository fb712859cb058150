#include "platform/report/ReportTemplate.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <kainjow/mustache.hpp>

using namespace Qt::StringLiterals;
namespace mustache = kainjow::mustache;

namespace platform {

namespace {

const QSizeF kA4(210, 297);
const QSizeF kA5(148, 210);

/// Up to here a list is laid out with its report: all on one page, as an order nearly always is.
constexpr size_t kShortList = 25;
/// Stands for the rows of a long list; no text of a file has it.
constexpr QChar kRowsMark(0xFDD0);

/// The layout takes twice as long for every other table inside a table, and its stack ends.
constexpr int kDeepestTables = 8;
constexpr int kDeepestTags = 1000;
constexpr int kDeepestSections = 20;
const QString kNestingTags = u"<(/?)(?:div|span|font|a|b|i|u|s|em|strong|big|small|su[bp]|tt|code|pre|center|"
                             "blockquote|[duo]l|h[1-6])\\b"_s;
const QString kTooDeep = u"sie ist zu tief verschachtelt"_s;

QString breakLines(QString text) {
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    while (text.endsWith(u'\n'))
        text.chop(1);
    return text.replace(u'\n', u"<br>"_s);
}

std::string escaped(const std::string& value) {
    return breakLines(QString::fromStdString(value).toHtmlEscaped()).toStdString();
}

bool isEmptyOrZero(const QString& value) {
    static const QRegularExpression zero(u"^[-0.']*$"_s);
    return zero.match(value).hasMatch();
}

QString withoutTrailingZeros(const QString& value) {
    static const QRegularExpression decimals(u"^(-?[0-9']+)(?:\\.0*|(\\.[0-9]*[1-9])0*)$"_s);
    const auto match = decimals.match(value);
    return match.hasMatch() ? match.captured(1) + match.captured(2) : value;
}

/// The lists' tables hold numbers, the slip's formed texts.
QString asAmount(const QString& value) {
    const auto number = common::parseNumber(value);
    return number ? common::formatNumber(*number, u"#,##0.00") : value;
}

/// An empty text is "false", so that a column can be asked for as a section.
mustache::data valueOf(const QString& text) {
    return text.isEmpty() ? mustache::data(false) : mustache::data(text.toStdString());
}

/// Makes the rows into what the tags ask for, in no more forms than the text of the report uses.
class Rows {
  public:
    explicit Rows(const QString& text) :
        m_truth(text.contains(u'?')), m_amount(text.contains(u":betrag"_s)),
        m_brief(text.contains(u":kurz"_s)) {}

    mustache::object object(const ReportData::Row& row) const {
        mustache::object object;
        for (const auto& [column, text] : row) {
            object[column.toStdString()] = valueOf(text);
            if (m_truth)
                object[(column + u'?').toStdString()] = mustache::data(!isEmptyOrZero(text));
            if (m_amount)
                object[(column + u":betrag"_s).toStdString()] = valueOf(asAmount(text));
            if (m_brief)
                object[(column + u":kurz"_s).toStdString()] = valueOf(withoutTrailingZeros(text));
        }
        return object;
    }

  private:
    bool m_truth, m_amount, m_brief;
};

ReportData::Row firstValues(const std::vector<ReportData::Row>& rows) {
    ReportData::Row first;
    for (const auto& row : rows) {
        for (const auto& cell : row) {
            const bool known = std::any_of(first.begin(), first.end(),
                                           [&](const auto& other) { return other.first == cell.first; });
            if (!cell.second.isEmpty() && !known)
                first.push_back(cell);
        }
    }
    return first;
}

/// Of the columns that hold numbers only.
ReportData::Row sums(const std::vector<ReportData::Row>& rows) {
    ReportData::Row result = rows.empty() ? ReportData::Row() : rows.front();
    for (size_t column = 0; column < result.size(); ++column) {
        double sum = 0;
        bool isSum = true;
        for (const auto& row : rows) {
            const QString& text = row[column].second;
            const auto number = text.isEmpty() ? std::optional(0.0) : common::parseNumber(text);
            isSum = isSum && number;
            sum += number.value_or(0);
        }
        result[column].second = isSum ? common::numberToText(sum) : QString();
    }
    return result;
}

/// What the tags of the text stand for. Of the table that goes its own way only whether it has rows.
mustache::data contextOf(const ReportData& data, const QString& text, const QString& apart) {
    const Rows objects(text);
    mustache::object context;
    context["Firma"] = valueOf(data.firm);
    context["Titel"] = valueOf(data.title);
    for (const auto& [table, rows] : data.tables) {
        mustache::list list;
        if (table != apart)
            for (const auto& row : rows)
                list.emplace_back(objects.object(row));
        context[table.toStdString()] = table == apart ? mustache::data(true) : mustache::data(list);
        if (const QString first = table + u":erste"_s; text.contains(first))
            context[first.toStdString()] = mustache::data(objects.object(firstValues(rows)));
        if (const QString sum = table + u":summe"_s; text.contains(sum))
            context[sum.toStdString()] = mustache::data(objects.object(sums(rows)));
    }
    return mustache::data(context);
}

/// Where the rows of a long list stand in a report's text.
struct LongList {
    QString table{}, row{};
    qsizetype start = 0, length = 0;
};

LongList longListOf(const QString& text, const ReportData& data) {
    static const QRegularExpression section(
        u"\\{\\{#\\s*([^{}]+?)\\s*\\}\\}\\s*(<tr.*?</tr>)\\s*\\{\\{/\\s*\\1\\s*\\}\\}"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    for (auto match = section.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        const auto rows = data.tables.find(found.captured(1));
        const bool inTable = QStringView(text).left(found.capturedStart()).trimmed().endsWith(u"</thead>"_s);
        const bool plain =
            !found.captured(2).contains(u"<table"_s) && !found.captured(2).contains(u":erste"_s) &&
            !found.captured(2).contains(u":summe"_s) && !found.captured(2).contains(u"Firma}}"_s) &&
            !found.captured(2).contains(u"Titel}}"_s);
        if (rows != data.tables.end() && rows->second.size() > kShortList && inTable && plain)
            return {found.captured(1), found.captured(2), found.capturedStart(), found.capturedLength()};
    }
    return {};
}

std::vector<QByteArray> filledRows(const QString& text, const std::vector<ReportData::Row>& rows,
                                   const Progress& progress) {
    mustache::mustache tags(text.toStdString());
    tags.set_custom_escape(escaped);
    const Rows objects(text);
    std::vector<QByteArray> result;
    for (const auto& row : rows) {
        result.push_back(QByteArray::fromStdString(tags.render(mustache::data(objects.object(row)))));
        progress(qint64(result.size()), qint64(rows.size()));
    }
    return result;
}

QString filled(const QString& text, const mustache::data& context) {
    mustache::mustache tags(text.toStdString());
    tags.set_custom_escape(escaped);
    return QString::fromStdString(tags.render(context));
}

/// Head and foot are drawn as plain text: no escaping, one line.
QString filledLine(const QString& text, const mustache::data& context, const ReportData& data) {
    mustache::mustache tags(text.toStdString());
    tags.set_custom_escape([](const std::string& value) { return value; });
    return QString::fromStdString(tags.render(context))
        .replace(u"{Firma}"_s, data.firm)
        .replace(u"{Titel}"_s, data.title)
        .replace(u"{Heute}"_s, common::formatDate(common::clock::now(), u"DD/MM/YYYY"))
        .simplified();
}

/// How deep the elements of a pattern stand in one another; its first group is "/" in what closes.
int nesting(const QString& text, const QString& pattern) {
    const QRegularExpression mark(pattern, QRegularExpression::CaseInsensitiveOption);
    int depth = 0, deepest = 0;
    for (auto match = mark.globalMatch(text); match.hasNext();) {
        depth = match.next().capturedView(1) == u"/" ? qMax(0, depth - 1) : depth + 1;
        deepest = qMax(deepest, depth);
    }
    return deepest;
}

QString metaOf(const QString& html, const QString& name) {
    const QRegularExpression meta(u"<meta\\s+name=\"%1\"\\s+content=\"([^\"]*)\""_s.arg(name),
                                  QRegularExpression::CaseInsensitiveOption);
    return meta.match(html).captured(1).trimmed();
}

QString titleOf(const QString& html) {
    static const QRegularExpression title(u"<title>([^<]*)</title>"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    return title.match(html).captured(1).trimmed();
}

/// An invalid size for an unknown name.
QSizeF paperOf(const QString& name) {
    static const QRegularExpression roll(u"^Rolle (\\d{2,3})$"_s);
    if (const auto match = roll.match(name); match.hasMatch())
        return QSizeF(match.captured(1).toInt(), 0);
    const QString format = name.section(u' ', 0, 0);
    const QString position = name.section(u' ', 1);
    const QSizeF upright = format.isEmpty() || format == u"A4" ? kA4 : format == u"A5" ? kA5 : QSizeF();
    if (position == u"quer")
        return upright.transposed();
    return position.isEmpty() || position == u"hoch" ? upright : QSizeF();
}

} // namespace

QString FilledReport::part(size_t first, size_t count) const {
    const qsizetype mark = html.indexOf(kRowsMark);
    const qsizetype table = html.lastIndexOf(u"<table"_s, mark, Qt::CaseInsensitive);
    const qsizetype body = html.indexOf(u'>', html.indexOf(u"<body"_s, 0, Qt::CaseInsensitive)) + 1;
    QString text = first == 0 ? html.left(mark) : html.left(body) + html.mid(table, mark - table);
    for (size_t row = first; row < first + count; ++row)
        text += QString::fromUtf8(rows[row]);
    return text + (first + count == rows.size() ? html.mid(mark + 1) : u"</table>"_s);
}

void ReportPage::setLandscape(bool landscape) {
    if (!isRoll() && landscape != isLandscape())
        size.transpose();
}

ReportTemplate::ReportTemplate(const QString& path) : m_path(path) {
    m_path.replace(u'\\', u'/');
    QFile file(m_path);
    if (!file.exists())
        throw common::RunTimeError(
            common::kFileNotFound,
            u"Die Berichtsdatei \"%1\" wurde nicht gefunden."_s.arg(QFileInfo(m_path).fileName()), m_path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(u"sie lässt sich nicht öffnen"_s, file.errorString());
    constexpr qint64 kLargest = 1'000'000;
    const QByteArray text = file.read(kLargest + 1);
    if (text.size() > kLargest)
        refuse(u"sie ist zu gross"_s);
    m_text = QString::fromUtf8(text);
    if (m_text.trimmed().isEmpty())
        refuse(u"sie ist leer"_s);
    readHead();
    checkTags();
}

void ReportTemplate::readHead() {
    m_title = titleOf(m_text);
    m_page.size = paperOf(metaOf(m_text, u"Seite"_s));
    if (m_page.size.width() <= 0)
        refuse(u"das Papier \"%1\" ist unbekannt"_s.arg(metaOf(m_text, u"Seite"_s)));
    const QStringList edges = metaOf(m_text, u"Rand"_s).split(u' ', Qt::SkipEmptyParts);
    m_page.margins = m_page.isRoll() ? QMarginsF(4, 4, 4, 4) : QMarginsF(20, 15, 15, 20);
    if (edges.size() == 4)
        m_page.margins = {edges[3].toDouble(), edges[0].toDouble(), edges[1].toDouble(), edges[2].toDouble()};
    const QMarginsF& m = m_page.margins;
    if (m.left() + m.right() >= m_page.size.width() ||
        (!m_page.isRoll() && m.top() + m.bottom() >= m_page.size.height()))
        refuse(u"die Ränder lassen keinen Platz"_s);
    m_page.header = metaOf(m_text, u"Kopf"_s);
    m_page.footer = metaOf(m_text, u"Fuss"_s);
}

void ReportTemplate::checkTags() const {
    // Other marks than the usual ones would pass by what reads the file here.
    if (m_text.contains(u"{{="_s))
        refuse(u"ihre Platzhalter lassen sich nicht anders schreiben"_s);
    if (nesting(m_text, u"\\{\\{\\s*([#^/])"_s) > kDeepestSections)
        refuse(kTooDeep);
    const mustache::mustache tags(m_text.toStdString());
    if (!tags.is_valid())
        refuse(u"ihre Platzhalter sind fehlerhaft"_s, QString::fromStdString(tags.error_message()));
}

void ReportTemplate::refuse(const QString& why, const QString& detail) const {
    throw common::RunTimeError(
        common::kPlatformFailure,
        u"Die Berichtsdatei \"%1\" ist nicht verwendbar: %2."_s.arg(QFileInfo(m_path).fileName(), why),
        detail.isEmpty() ? m_path : m_path + u": "_s + detail);
}

QStringList ReportTemplate::sections() const {
    static const QRegularExpression section(u"\\{\\{\\s*[#^]\\s*([^{}]+?)\\s*\\}\\}"_s);
    static const QRegularExpression first(u"\\{\\{\\s*([^{}]+?):(?:erste|summe)\\."_s);
    QStringList names;
    for (const auto& pattern : {section, first}) {
        for (auto match = pattern.globalMatch(m_text); match.hasNext();)
            names << match.next().captured(1);
    }
    names.removeDuplicates();
    return names;
}

FilledReport ReportTemplate::fill(const ReportData& data, const Progress& progress) const {
    const LongList list = m_page.isRoll() ? LongList() : longListOf(m_text, data);
    QString text = m_text;
    std::vector<QByteArray> rows;
    if (!list.table.isEmpty()) {
        rows = filledRows(list.row, data.tables.at(list.table), progress);
        text.replace(list.start, list.length, kRowsMark);
    }
    const mustache::data context = contextOf(data, m_text, list.table);
    FilledReport report{m_title, filled(text, context), m_page, QFileInfo(m_path).path(), std::move(rows)};
    // Not before: a section may open what it does not close, once for each of its rows.
    if (nesting(report.html, u"<(/?)table\\b"_s) > kDeepestTables ||
        nesting(report.html, kNestingTags) > kDeepestTags)
        refuse(kTooDeep);
    report.page.header = filledLine(m_page.header, context, data);
    report.page.footer = filledLine(m_page.footer, context, data);
    return report;
}

} // namespace platform
