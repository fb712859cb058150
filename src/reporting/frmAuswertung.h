#pragma once
#include "platform/Progress.h"
#include "platform/Services.h"
#include "platform/form/DataControl.h"
#include "platform/form/DataGrid.h"
#include "platform/form/DateFields.h"
#include "platform/report/SheetExport.h"
#include <QVariant>
#include <QWidget>
#include <functional>
#include <optional>

class QComboBox;

/// What every screen of the statistics does. A screen derives from it, has a layout with what it needs of the
/// controls below, and fills in what is its own. They only read: nothing here changes a booking.
///
///     a platform::DateSpan         the days
///     cmdShow                      showFigures
///     cmdPrint                     printFigures
///     cmdExport                    sheets, as one .xlsx
///     cmdClose                     closes
///
/// Whatever reads figures goes through `reading`: it shows how long it takes and can be given up, which
/// leaves figures and choices as they were.
class frmAuswertung : public QWidget {
    Q_OBJECT
  public:
    /// As its layout was drawn, which fits the room of a small screen.
    QSize sizeHint() const override { return m_drawn.expandedTo(minimumSizeHint()); }

  protected:
    frmAuswertung(const platform::Services& services, QWidget* parent);

    /// Puts the controls of the layout to work.
    void setUpControls();
    /// The user's change of one of these lists, buttons and boxes does `act`.
    void onChange(const QList<QWidget*>& choices, const std::function<void()>& act);

    /// Shows figures; `read` is what takes long, and shows nothing before it has all of it. False when it was
    /// given up.
    bool reading(const std::function<void(const platform::Progress&)>& read);

    // What a screen fills in

    virtual void showFigures() = 0;
    virtual void printFigures() = 0;
    virtual std::vector<platform::SheetTable> sheets() const = 0;

    /// What cmdExport does.
    void exportFigures();

    /// The screen comes to the front, opening included.
    virtual void activated() {}

    // Help for filling in

    /// Couriers by their codes, behind "Alle" where that is wanted.
    static void fillKurierCombo(QComboBox& list, bool alle);
    /// Key of the chosen courier; nothing on "Alle" or without a choice.
    static std::optional<qint64> kurierOf(const QComboBox& list);
    /// Whose the figures are, behind what a heading tells; "" for all couriers.
    static QString kurierText(const QComboBox& list);
    /// An amount as the totals show it.
    static QString total(double amount);

    /// Of a layout that has one.
    platform::DateSpan& zeitraum() const;

    qint64 von() const { return zeitraum().von(); }

    qint64 bis() const { return zeitraum().bis(); }

    /// The two date texts with " - " between.
    QString vonBis() const { return zeitraum().text(); }

    /// Prints by a report file of the installation (see platform::printList).
    void print(const QString& reportFile, const QString& title,
               const std::function<void(const platform::Progress&)>& fillPrintTables);

    /// Lets a list show the rows of a control, which reads from the main database.
    void setUpGrid(platform::DataGrid& grid, platform::DataControl& rows);

    const platform::Services& services() const { return m_services; }

    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

    /// A button does `act`, with the focus on it: what is typed in a field counts as left.
    void onClick(const char16_t* name, const std::function<void()>& act);

  private:
    void rememberChoices();
    void restoreChoices();

    platform::Services m_services;
    QSize m_drawn;
    QList<QWidget*> m_choices;
    QList<QVariant> m_chosen; ///< as of the figures on show
};
