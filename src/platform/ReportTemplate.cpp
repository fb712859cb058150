#include "platform/ReportTemplate.h"
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

mustache::object objectOf(const ReportData::Row& row) {
    mustache::object object;
    for (const auto& [column, text] : row) {
        object[column.toStdString()] = valueOf(text);
        object[(column + u'?').toStdString()] = mustache::data(!isEmptyOrZero(text));
        object[(column + u":betrag"_s).toStdString()] = valueOf(asAmount(text));
        object[(column + u":kurz"_s).toStdString()] = valueOf(withoutTrailingZeros(text));
    }
    return object;
}

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

mustache::data contextOf(const ReportData& data) {
    mustache::object context;
    for (const auto& [table, rows] : data.tables) {
        mustache::list list;
        for (const auto& row : rows)
            list.emplace_back(objectOf(row));
        context[table.toStdString()] = mustache::data(list);
        context[(table + u":erste"_s).toStdString()] = mustache::data(objectOf(firstValues(rows)));
    }
    return mustache::data(context);
}

QString filled(const QString& text, const mustache::data& context) {
    mustache::mustache tags(text.toStdString());
    tags.set_custom_escape(escaped);
    return QString::fromStdString(tags.render(context));
}

/// Head and foot are drawn as plain text: no escaping, one line.
QString filledLine(const QString& text, const mustache::data& context) {
    mustache::mustache tags(text.toStdString());
    tags.set_custom_escape([](const std::string& value) { return value; });
    return QString::fromStdString(tags.render(context))
        .replace(u"{Heute}"_s, common::formatDate(common::clock::now(), u"DD/MM/YYYY"))
        .simplified();
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
    m_text = QString::fromUtf8(file.readAll());
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
    static const QRegularExpression first(u"\\{\\{\\s*([^{}]+?):erste\\."_s);
    QStringList names;
    for (const auto& pattern : {section, first}) {
        for (auto match = pattern.globalMatch(m_text); match.hasNext();)
            names << match.next().captured(1);
    }
    names.removeDuplicates();
    return names;
}

FilledReport ReportTemplate::fill(const ReportData& data) const {
    const mustache::data context = contextOf(data);
    FilledReport report{m_title, filled(m_text, context), m_page};
    report.page.header = filledLine(m_page.header, context);
    report.page.footer = filledLine(m_page.footer, context);
    return report;
}

} // namespace platform
