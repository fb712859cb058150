#pragma once
#include "desks/CustomerDesk.h"
#include "platform/form/MasterDataForm.h"
#include "telephony/PhoneBook.h"
#include <memory>

namespace modVerwaltungKunden {
struct Kunde;
} // namespace modVerwaltungKunden

namespace Ui {
class frmVerwaltungKunden;
}

/// Searches, shows and keeps the customers, and hands one over to the order screen.
///
/// Departs from the form: the list holds the result of a search, after a save the saved customer alone; there
/// is no duplicate test, since two customers may share a number; quotes stay; cleaning the mask leaves the
/// focus where it is.
class frmVerwaltungKunden : public platform::MasterDataForm, public desks::CustomerDesk {
    Q_OBJECT
    Q_PROPERTY(qint64 ClientID READ key)
  public:
    /// The phone book outlives the screen.
    frmVerwaltungKunden(const platform::Services& services, telephony::PhoneBook& phoneBook,
                        QWidget* parent = nullptr);
    ~frmVerwaltungKunden() override;

    /// Runs the list's present query afresh.
    void FormatGrid() override;
    /// The day of the last save and the focus stay.
    void CleanMask() override;
    void openCustomer(qint64 customerId) override;
    void captureCustomer(const desks::WebCustomer& customer) override;

  protected:
    bool showRecord(qint64 key) override;
    store::RowMark markRecord(qint64 key) const override;
    bool checkInput() override;
    void saveRecord() override;
    bool mayDelete() override;
    void deleteRecord() override;
    void showSaved() override;
    void showDeleted() override;

  private:
    void setUpLists();
    void setUpFields();
    void setUpButtons();
    void showQuery(const QString& query);
    void showTotal();
    /// Moves to a row of the list, counted from 0, where there is one.
    void moveTo(int row);
    modVerwaltungKunden::Kunde mask() const;
    bool numberGiven();
    bool numberValid(const QLineEdit& field) const;

    void cmdSearch_Click();
    void cmdSearchPhoneBook_Click();
    void cmdAuftragserfassung_Click();
    void combo_Sorting_Click(int index);

    std::unique_ptr<Ui::frmVerwaltungKunden> m_ui;
    telephony::PhoneBook& m_phoneBook;
    QString m_query;
    qint64 m_saved = kNewRecord;
};
