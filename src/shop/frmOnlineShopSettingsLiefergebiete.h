#pragma once
#include "platform/form/MasterDataForm.h"
#include <memory>

namespace Ui {
class frmOnlineShopSettingsLiefergebiete;
}

/// Keeps the directory of postcodes: which places the firm delivers to, and on which terms. A row comes into
/// the mask by a double click or Enter only.
class frmOnlineShopSettingsLiefergebiete : public platform::MasterDataForm {
    Q_OBJECT
  public:
    explicit frmOnlineShopSettingsLiefergebiete(const platform::Services& services,
                                                QWidget* parent = nullptr);
    ~frmOnlineShopSettingsLiefergebiete() override;

    /// The list stands at the row that the mask shows, or where it stood.
    void FormatGrid() override;
    /// The country carries over to the next new record.
    void CleanMask() override;

  protected:
    bool showRecord(qint64 key) override;
    store::RowMark markRecord(qint64 key) const override;
    bool checkInput() override;
    void saveRecord() override;
    bool mayDelete() override;
    void deleteRecord() override;

    bool browses() const override { return false; }

    QString buttonName(const QString& act) const override;

  private:
    void fillLists();
    void setUpSorting();
    /// Nothing for a text that is no whole number of a postcode's size.
    std::optional<qint64> plz() const;
    /// Whether a new record may be stored: a row of the same place is replaced only after a question.
    bool mayReplace();

    std::unique_ptr<Ui::frmOnlineShopSettingsLiefergebiete> m_ui;
};
