#pragma once
#include "platform/form/MasterDataForm.h"
#include <memory>

namespace Ui {
class frmProdukteKategorien;
}

/// Keeps the categories under which products are filed.
class frmProdukteKategorien : public platform::MasterDataForm {
    Q_OBJECT
    Q_PROPERTY(qint64 ProduktGruppeID READ key)
  public:
    explicit frmProdukteKategorien(const platform::Services& services, QWidget* parent = nullptr);
    ~frmProdukteKategorien() override;

    void FormatGrid() override;
    /// The position number carries over to the next new record.
    void CleanMask() override;

  protected:
    bool showRecord(qint64 key) override;
    store::RowMark markRecord(qint64 key) const override;
    bool checkInput() override;
    void saveRecord() override;
    bool mayDelete() override;
    void deleteRecord() override;

  private:
    std::unique_ptr<Ui::frmProdukteKategorien> m_ui;
};
