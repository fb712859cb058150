#include "platform/report/SheetExport.h"
#include "common/AtomicFile.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "platform/form/DataGrid.h"
#include "platform/form/GridColors.h"
#include <QAction>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// What one cell of a sheet can hold.
constexpr int kLongestText = 32767;

/// A spreadsheet that is being made. The library writes to a path only, and not in one step: to one of its
/// own.
class Sheet {
  public:
    Sheet() :
        m_path(m_folder.filePath(u"tabelle.xlsx"_s)),
        m_book(workbook_new(QFile::encodeName(m_path).constData())) {
        if (!m_book)
            fail(m_folder.errorString());
        m_sheet = workbook_add_worksheet(m_book, nullptr);
        worksheet_freeze_panes(m_sheet, 1, 0);
    }

    ~Sheet() {
        // Closing would write the file.
        if (m_book)
            lxw_workbook_free(m_book);
    }

    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

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
        m_forms.push_back({formatOf(form, form.format), formatOf(form, ofDates)});
        worksheet_set_column(m_sheet, column, column, twipsToPixels(form.twips) / kPixelsOfADigit, nullptr);
        check(worksheet_write_string(m_sheet, 0, column, form.heading.toUtf8().constData(), heading));
    }

    void addCell(int row, size_t column, const common::Value& value) {
        check(write(lxw_row_t(row + 1), lxw_col_t(column), value,
                    value.isDate() ? m_forms[column].second : m_forms[column].first));
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
            return worksheet_write_number(m_sheet, row, column, value.toDouble(), format);
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
    std::vector<std::pair<lxw_format*, lxw_format*>> m_forms; ///< of cells, and of those with a date
};

void exportSheet(const DataGrid& grid, Dialogs& dialogs, const QString& name) {
    const QString title = DataGrid::tr("Als Tabelle speichern");
    const QString path = dialogs.SaveFile(title, name, u"xlsx"_s);
    if (path.isEmpty())
        return;
    try {
        saveAsXlsx(grid, path, dialogs.ShowProgress(DataGrid::tr("Die Tabelle wird geschrieben …")));
    } catch (const GivenUp&) {
        return;
    } catch (const common::RunTimeError& error) {
        dialogs.MsgBox(error.sentence(), kOk + kStop, title);
    }
}

} // namespace

void saveAsXlsx(const DataGrid& grid, const QString& path, const Progress& progress) {
    Sheet sheet;
    std::vector<int> shown;
    for (int column = 0; column < int(grid.columns().size()); ++column) {
        if (grid.isColumnHidden(column))
            continue;
        shown.push_back(column);
        sheet.addColumn(grid.columns()[size_t(column)]);
    }
    for (int row = 0; row < grid.rowCount(); ++row) {
        for (size_t column = 0; column < shown.size(); ++column)
            sheet.addCell(row, column, grid.value(row, shown[column]));
        progress(row + 1, grid.rowCount());
    }
    common::writeFileAtomically(path, sheet.close());
}

void offerSheetExport(DataGrid& grid, Dialogs& dialogs, const QString& name) {
    common::connectGuarded(common::Origin::User, &grid, &DataGrid::rowContextMenu, &grid,
                           [&grid, &dialogs, name](int, const QPoint& position) {
                               auto* menu = new QMenu(&grid);
                               menu->setAttribute(Qt::WA_DeleteOnClose);
                               QAction* action = menu->addAction(DataGrid::tr("Als &Tabelle speichern …"));
                               action->setObjectName(u"mnExport"_s);
                               common::connectGuarded(
                                   common::Origin::User, action, &QAction::triggered, &grid,
                                   [&grid, &dialogs, name] { exportSheet(grid, dialogs, name); });
                               menu->popup(position);
                           });
}

} // namespace platform
