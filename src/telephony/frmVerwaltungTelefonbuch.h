#pragma once
#include "platform/form/DataControl.h"
#include "telephony/modVerwaltungTelefonbuch.h"
#include <QDialog>
#include <memory>

namespace Ui {
class frmVerwaltungTelefonbuch;
}

/// The list of a search in the telephone directory. The user picks a row with a double click or Enter; the
/// list then closes as accepted.
class frmVerwaltungTelefonbuch : public QDialog {
    Q_OBJECT
  public:
    explicit frmVerwaltungTelefonbuch(QWidget* parent = nullptr);
    ~frmVerwaltungTelefonbuch() override;

    /// Runs the query on the directory; gives the number of rows.
    int search(const QString& sql);

    /// Whether a row was picked, and its texts.
    bool PhoneBookSelected() const { return m_selected; }

    const modVerwaltungTelefonbuch::PhoneBookEntry& PhoneBookRow() const { return m_row; }

  private:
    void FormatGrid();
    void CopyAdressFromPhoneBook(int row);

    std::unique_ptr<Ui::frmVerwaltungTelefonbuch> m_ui;
    platform::DataControl DataControl;
    modVerwaltungTelefonbuch::PhoneBookEntry m_row;
    bool m_selected = false;
};
