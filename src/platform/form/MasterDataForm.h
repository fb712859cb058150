#pragma once
#include "platform/Dialogs.h"
#include "platform/Progress.h"
#include "platform/Services.h"
#include "platform/form/DataControl.h"
#include "platform/form/DataGrid.h"
#include "store/RowMark.h"
#include "store/Stations.h"
#include <QPointer>
#include <QWidget>
#include <vector>

class QAbstractButton;
class QLineEdit;

namespace platform {

/// The form of every screen that keeps the rows of one table: a list over a mask, and the same few acts on
/// both. A screen derives from it and fills in what is its own: a layout with one DataGrid, a splitter and
/// the four buttons below, and the functions that the form leaves open. Where a screen departs from the form
/// it overrides that act, so that the departure stands in its own file.
///
///     choosing a row   chooseRow: CleanMask, then the row of the key in the list's column 0 into the mask
///     cmdClean         CleanMask
///     cmdSave          checkInput, saveRecord, the pause after a write, showSaved
///     cmdDelete        mayDelete, deleteRecord, the pause after a write, showDeleted
///     cmdClose         closes; unsaved input is dropped without a question
///
/// What is marked in the list is what is in the mask. The arrow keys browse: rows load, the focus stays in
/// the list. A click leads into the mask where cleaning the mask does; Enter and a double click always do.
/// Enter leads through the fields to cmdSave. Every text field selects its whole text when the focus comes to
/// it. The mask takes the height it needs, the list the rest.
class MasterDataForm : public QWidget {
    Q_OBJECT
  public:
    static constexpr qint64 kNewRecord = -1;

    /// Key of the record in the mask; -1 for a new one, 0 as long as nothing was chosen or cleaned, which
    /// acts like a new one.
    qint64 key() const { return m_key; }

    /// Fills and formats the list.
    virtual void FormatGrid() = 0;
    /// Empties the mask for a new record. The form itself sets the key to -1 and disables cmdDelete; the
    /// screen adds its fields, and the focus where it belongs.
    virtual void CleanMask();

    /// The fixed size, which a window around the screen takes.
    QSize sizeHint() const override { return minimumSize(); }

  protected:
    /// The list reads from the connection, which outlives the screen.
    MasterDataForm(const Services& services, store::Connection& connection, QWidget* parent);

    /// Puts the controls to work and gives the screen its fixed size. To be called by the screen's
    /// constructor, once its layout stands. Enter leads along the chain and on to `last`, cmdSave unless
    /// told otherwise; its first field has the focus when the screen opens.
    void setUpForm(QList<QWidget*> chain, QSize twips, QWidget* last = nullptr);

    /// Runs the query and shows its rows; `filter` narrows the fetched ones (see
    /// store::Recordset::Filter). Column 0 is the key.
    void showRows(const QString& query, const std::vector<DataColumn>& columns, const QString& filter = {});
    /// chooseRow; the row is marked once it is in the mask. One that is gone from the store is passed over:
    /// the list stands there, and the way leads on. The focus stays where that puts it.
    void goToRow(int row);
    /// Prints the list (see printList); it stands at its first row afterwards.
    void printRows(const ReportJob& list, const std::function<void(const Progress&)>& fillPrintTable);

    /// Reads the list again when other stations have changed what it shows; the mask stays.
    void follow(store::Topic topic);

    // What a screen fills in

    /// Copies the row of the key into the mask's controls. False, with nothing changed, when there is none.
    virtual bool showRecord(qint64 key) = 0;
    /// What showRecord shows, as it stands in the store: saving and deleting refuse where another station has
    /// changed it since.
    virtual store::RowMark markRecord(qint64 key) const = 0;
    /// The checks in their order; the first that fails tells the user and gives false.
    virtual bool checkInput() = 0;
    /// The mask into the row of key(), as long as it is as mark() tells; adds one when there is none.
    virtual void saveRecord() = 0;
    /// Guard and question; tells the user why not.
    virtual bool mayDelete() = 0;
    /// Deletes the row of key(), as long as it is as mark() tells.
    virtual void deleteRecord() = 0;

    // Acts that a screen may do in its own way

    virtual void chooseRow(int row);

    /// Where false, only Enter and a double click bring a row into the mask; going to it marks it, no more.
    virtual bool browses() const { return true; }

    /// Name of the button of that act, where it bears another one.
    virtual QString buttonName(const QString& act) const { return act; }

    virtual void showSaved() { showFresh(); }

    virtual void showDeleted() { showFresh(); }

    // Help for filling in

    /// showRecord, and on success the key and cmdDelete.
    void loadRecord(qint64 key);

    /// The record of the key is the one to be saved, as it stands in the store now.
    void setKey(qint64 key);

    const store::RowMark& mark() const { return m_mark; }

    /// Key of a row of the list.
    qint64 keyOfRow(int row) const;

    /// Trims the field's text; whether there is any.
    static bool filled(QLineEdit& field);
    /// Tells the user, and gives false: the end of a check or guard that fails. An answer does not count.
    bool refuse(const QString& text, const QString& caption, int style = kOk);
    /// The same, and the focus goes to the field that is to be mended.
    bool refuse(QWidget& faulty, const QString& text, const QString& caption, int style = kOk);
    /// Asks with Yes and No.
    bool confirm(const QString& text, const QString& caption);

    const Services& services() const { return m_services; }

    DataControl& dataControl() { return m_rows; }

    void showEvent(QShowEvent* event) override;

  private:
    void setUpActs();
    void showFresh();
    void browseTo(int row);
    void save();
    void remove();

    Services m_services;
    DataControl m_rows;
    DataGrid* m_grid = nullptr;
    QAbstractButton* m_delete = nullptr;
    QWidget* m_firstField = nullptr;
    QPointer<QWidget> m_entry; ///< where the present choice put the focus, null where it left it
    qint64 m_key = 0;
    store::RowMark m_mark; ///< of the record in the mask, unset for a new one
};

} // namespace platform
