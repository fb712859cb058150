#pragma once
#include "platform/form/MasterDataForm.h"
#include <memory>

namespace Ui {
class frmVerwaltungKuriere;
}

/// Keeps the couriers who deliver the orders.
///
/// Departs from the form: choosing a row does not clean the mask first, quotes stay, the duplicate test comes
/// before the second mandatory field, and deleting asks nothing.
class frmVerwaltungKuriere : public platform::MasterDataForm {
    Q_OBJECT
    Q_PROPERTY(qint64 KurierID READ key)
  public:
    explicit frmVerwaltungKuriere(const platform::Services& services, QWidget* parent = nullptr);
    ~frmVerwaltungKuriere() override;

    void FormatGrid() override;
    /// The position number carries over to the next new record.
    void CleanMask() override;

  protected:
    void chooseRow(int row) override;
    bool showRecord(qint64 key) override;
    store::RowMark markRecord(qint64 key) const override;
    bool checkInput() override;
    void saveRecord() override;
    bool mayDelete() override;
    void deleteRecord() override;

  private:
    std::unique_ptr<Ui::frmVerwaltungKuriere> m_ui;
};
