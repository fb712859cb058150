#pragma once
#include "platform/Progress.h"
#include <QByteArray>
#include <QMarginsF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <utility>
#include <vector>

class QPainter;

namespace platform {

/// What a report is filled with: the rows of each print table, every column as text.
struct ReportData {
    using Row = std::vector<std::pair<QString, QString>>;
    std::map<QString, std::vector<Row>> tables;
    /// The firm's name.
    QString firm{};
    /// What the run is called.
    QString title{};
};

/// The paper of a report. Lengths in millimetres.
struct ReportPage {
    /// As it lies before the reader: landscape is wider than high. The height of a roll is 0, it follows the
    /// text.
    QSizeF size;
    QMarginsF margins;
    /// One line above and below the text on every page, left, middle and right divided by "|". "{Seite}" and
    /// "{Seiten}" stand for the number of the page and of all pages, "{Heute}" for the date, "{Firma}" for
    /// the firm's name, "{Titel}" for what the run is called.
    QString header;
    QString footer;

    bool isRoll() const { return size.height() == 0; }

    bool isLandscape() const { return !isRoll() && size.width() > size.height(); }

    /// The same paper, lying or standing.
    void setLandscape(bool landscape);
};

/// A report filled in, ready to be laid out.
struct FilledReport {
    QString title;
    QString html;
    ReportPage page;
    /// Where the pictures and style sheets that it names stand; none is read from elsewhere.
    QString folder{};
    /// The rows of a list that is too long to be laid out at once; html has a mark in their place.
    std::vector<QByteArray> rows{};
    /// Draws the one page of a report that has no html, on what its margins leave: 96 units to the inch.
    std::function<void(QPainter&, const QSizeF&)> drawing{};

    /// The report with these rows of its long list alone: what stands before the list comes with the first
    /// row, what stands behind it with the last one, the list's head each time.
    QString part(size_t first, size_t count) const;
};

/// A report file: HTML with mustache tags, which the owner may change with a text editor.
///
/// The head tells the paper:
///     <title>Auftragsschein</title>
///     <meta name="Seite" content="A4">                   also "A5", "A4 quer", "A5 quer", "Rolle 80" (mm)
///     <meta name="Rand" content="15 15 20 20">           mm: top, right, bottom, left
///     <meta name="Kopf" content="links|Mitte|rechts">    on every page; "Fuss" likewise
///
/// {{#Table}} … {{/Table}} repeats its text for each row of a print table, {{Column}} is a column of that
/// row; all characters of a column's name are allowed. Values are data: "<" is printed as "<", line feeds
/// break the line. Beyond the columns themselves:
///     {{#Column}} … {{/Column}}      only if the column is not empty, {{^Column}} only if it is
///     {{#Column?}} … {{/Column?}}    only if it is neither empty nor zero
///     {{Column:kurz}}                a number without zeros at the end of its decimals: "2.00" is "2"
///     {{Column:betrag}}              a number with two decimals and thousands marks: "1234.5" is "1'234.50"
///     {{Table:erste.Column}}         the first value of the column that is not empty, usable anywhere
///     {{Table:summe.Column}}         the sum of a column of numbers; "" where the table is empty
///     {{Firma}}                      the firm's name, usable anywhere
///     {{Titel}}                      what the run is called, usable anywhere
class ReportTemplate {
  public:
    /// Throws common::RunTimeError: kFileNotFound for a missing file, kPlatformFailure for one that cannot be
    /// used (tags that do not close, unknown paper, too deep a nesting). The sentence names the file. fill
    /// throws the same.
    explicit ReportTemplate(const QString& path);

    /// The names of all sections; the print tables are among them.
    QStringList sections() const;
    /// A list of many rows in a table with <thead> comes as rows of their own, unless the paper is a roll.
    FilledReport fill(const ReportData& data, const Progress& progress = unwatched) const;

  private:
    void readHead();
    void checkTags() const;
    [[noreturn]] void refuse(const QString& why, const QString& detail = {}) const;

    QString m_path;
    QString m_text;
    QString m_title;
    ReportPage m_page;
};

/// Reads those of the named tables that the print database has. Throws what the store throws.
ReportData readPrintTables(const QString& dataFile, const QStringList& names,
                           const Progress& progress = unwatched);

} // namespace platform
