#include "platform/report/SheetExport.h"
#include "common/AtomicFile.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "platform/form/GridColors.h"
#include <QAction>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <array>
#include <cmath>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// What one cell of a sheet can hold.
constexpr int kLongestText = 32767;

/// Without the trace that sums of binary fractions carry, which a sheet would show: 97.64999999999999.
double tidy(double number) {
    constexpr double kPlaces = 1e6;
    constexpr double kExact = 1e9;
    return std::abs(number) < kExact ? std::round(number * kPlaces) / kPlaces : number;
}

/// What one sheet can hold, its headings and sums among them.
constexpr int kMostRows = 1'048'576;

/// A spreadsheet that is being made. The library writes to a path only, and not in one step: to one of its
/// own.
class Book {
  public:
    Book() :
        m_path(m_folder.filePath(u"tabelle.xlsx"_s)),
        m_book(workbook_new(QFile::encodeName(m_path).constData())) {
        if (!m_book)
            fail(m_folder.errorString());
    }

    ~Book() {
        // Closing would write the file.
        if (m_book)
            lxw_workbook_free(m_book);
    }

    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    /// The following columns and cells are this sheet's.
    void addSheet(const QString& name, const QString& heading) {
        // A sheet's name has its limits; one that breaks them is numbered by the library.
        const QByteArray title = name.left(31).toUtf8();
        const bool usable =
            !title.isEmpty() && workbook_validate_sheet_name(m_book, title.constData()) == LXW_NO_ERROR;
        m_sheet = workbook_add_worksheet(m_book, usable ? title.constData() : nullptr);
        m_forms.clear();
        worksheet_freeze_panes(m_sheet, 1, 0);
        // "&" begins a code in a heading.
        const QString above = QString(heading).replace(u'&', u"&&"_s).simplified().left(200);
        if (!above.isEmpty())
            worksheet_set_header(m_sheet, (u"&L"_s + above).toUtf8().constData());
    }

    /// The file as it goes to disk.
    QByteArray close() {
        check(workbook_close(std::exchange(m_book, nullptr)));
        QFile file(m_path);
        QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        // The directory of the archive is what comes last.
        constexpr qsizetype kDirectoryEnd = 22;
        if (!bytes.last(qMin(kDirectoryEnd, bytes.size())).startsWith("PK\5\6"))
            fail(u"the archive has no end"_s);
        return bytes;
    }

    /// Heading and form of a column; its cells follow row by row.
    void addColumn(const DataColumn& form) {
        constexpr double kPixelsOfADigit = 7;
        const auto column = lxw_col_t(m_forms.size());
        lxw_format* heading = formatOf(form, {});
        format_set_bold(heading);
        format_set_bottom(heading, LXW_BORDER_THIN);
        // A date is a number to a sheet: without a form it would show as one.
        const QString ofDates = form.format.isEmpty() ? u"dd/mm/yyyy"_s : form.format;
        lxw_format* sum = formatOf(form, form.format);
        format_set_bold(sum);
        format_set_top(sum, LXW_BORDER_THIN);
        m_forms.push_back({formatOf(form, form.format), formatOf(form, ofDates), sum});
        worksheet_set_column(m_sheet, column, column, twipsToPixels(form.twips) / kPixelsOfADigit, nullptr);
        check(worksheet_write_string(m_sheet, 0, column, form.heading.toUtf8().constData(), heading));
    }

    /// Below so many rows; `sum` is what a reader shows who does not reckon.
    void addSum(int rows, size_t column, double sum) {
        const auto place = lxw_col_t(column);
        std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range{};
        lxw_rowcol_to_range(range.data(), 1, place, lxw_row_t(rows), place);
        const std::string formula = "=SUM(" + std::string(range.data()) + ")";
        check(worksheet_write_formula_num(m_sheet, lxw_row_t(rows + 1), place, formula.c_str(),
                                          m_forms[column].sum, tidy(sum)));
    }

    void addCell(int row, size_t column, const common::Value& value) {
        check(write(lxw_row_t(row + 1), lxw_col_t(column), value,
                    value.isDate() ? m_forms[column].date : m_forms[column].plain));
    }

  private:
    /// The lists' number and date forms are the sheets' own.
    lxw_format* formatOf(const DataColumn& form, const QString& number) {
        lxw_format* format = workbook_add_format(m_book);
        if (form.alignment & Qt::AlignRight)
            format_set_align(format, LXW_ALIGN_RIGHT);
        else if (form.alignment & Qt::AlignHCenter)
            format_set_align(format, LXW_ALIGN_CENTER);
        if (!number.isEmpty())
            format_set_num_format(format, number.toUtf8().constData());
        return format;
    }

    lxw_error write(lxw_row_t row, lxw_col_t column, const common::Value& value, lxw_format* format) {
        if (value.isNull())
            return LXW_NO_ERROR;
        if (value.isDate())
            return worksheet_write_number(m_sheet, row, column, value.toSerial(), format);
        if (value.isInteger() || value.isDouble())
            return worksheet_write_number(m_sheet, row, column, tidy(value.toDouble()), format);
        return worksheet_write_string(m_sheet, row, column,
                                      value.toText().left(kLongestText).toUtf8().constData(), format);
    }

    void check(lxw_error error) const {
        if (error != LXW_NO_ERROR)
            fail(QString::fromUtf8(lxw_strerror(error)));
    }

    [[noreturn]] void fail(const QString& why) const {
        throw common::RunTimeError(
            common::kPlatformFailure,
            u"Die Tabelle lässt sich nicht schreiben, der Ordner für Zwischendateien nimmt sie nicht auf."_s,
            m_path + u": "_s + why);
    }

    QTemporaryDir m_folder;
    QString m_path;
    lxw_workbook* m_book;
    lxw_worksheet* m_sheet = nullptr;

    struct Forms {
        lxw_format *plain, *date, *sum;
    };

    std::vector<Forms> m_forms; ///< of the sheet's columns
};

void addTable(Book& book, const SheetTable& table, const Progress& progress) {
    if (table.rows > kMostRows - 2)
        throw common::RunTimeError(common::kPlatformFailure,
                                   u"Die Liste ist zu lang: eine Tabelle fasst höchstens 1'048'574 Zeilen."_s,
                                   QString::number(table.rows));
    book.addSheet(table.name, table.heading);
    std::vector<int> shown;
    std::vector<double> sums;
    for (int column = 0; column < int(table.columns.size()); ++column) {
        if (table.columns[size_t(column)].twips == 0)
            continue;
        shown.push_back(column);
        book.addColumn(table.columns[size_t(column)]);
    }
    sums.resize(shown.size());
    for (int row = 0; row < table.rows; ++row) {
        for (size_t column = 0; column < shown.size(); ++column) {
            const common::Value value = table.value(row, shown[column]);
            book.addCell(row, column, value);
            if (table.columns[size_t(shown[column])].isSummed && value.isNumeric())
                sums[column] += tidy(value.toDouble());
        }
        progress(row + 1, table.rows);
    }
    for (size_t column = 0; column < shown.size() && table.rows > 0; ++column)
        if (table.columns[size_t(shown[column])].isSummed)
            book.addSum(table.rows, column, sums[column]);
}

} // namespace

SheetTable sheetOf(const DataGrid& grid, const QString& name, const QString& heading) {
    return {name, grid.columns(), grid.rowCount(),
            [&grid](int row, int column) { return grid.value(row, column); }, heading};
}

void saveAsXlsx(const std::vector<SheetTable>& tables, const QString& path, const Progress& progress) {
    Book book;
    for (const SheetTable& table : tables)
        addTable(book, table, progress);
    common::writeFileAtomically(path, book.close());
}

void exportSheets(Dialogs& dialogs, const QString& name, const std::vector<SheetTable>& tables) {
    const QString title = DataGrid::tr("Als Tabelle speichern");
    const QString path = dialogs.SaveFile(title, name, {u"xlsx"_s});
    if (path.isEmpty())
        return;
    try {
        saveAsXlsx(tables, path, dialogs.ShowProgress(DataGrid::tr("Die Tabelle wird geschrieben …")));
    } catch (const GivenUp&) {
        return;
    } catch (const common::RunTimeError& error) {
        dialogs.MsgBox(error.sentence(), kOk + kStop, title);
    }
}

void offerSheetExport(DataGrid& grid, Dialogs& dialogs, const QString& name) {
    common::connectGuarded(common::Origin::User, &grid, &DataGrid::rowContextMenu, &grid,
                           [&grid, &dialogs, name](int, const QPoint& position) {
                               auto* menu = new QMenu(&grid);
                               menu->setAttribute(Qt::WA_DeleteOnClose);
                               QAction* action = menu->addAction(DataGrid::tr("Als &Tabelle speichern …"));
                               action->setObjectName(u"mnExport"_s);
                               common::connectGuarded(common::Origin::User, action, &QAction::triggered,
                                                      &grid, [&grid, &dialogs, name] {
                                                          exportSheets(dialogs, name, {sheetOf(grid, name)});
                                                      });
                               menu->popup(position);
                           });
}

} // namespace platform
