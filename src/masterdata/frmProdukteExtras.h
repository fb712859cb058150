#pragma once
#include "masterdata/frmArtikel.h"
#include <memory>

namespace Ui {
class frmProdukteExtras;
}

/// Keeps the extras that can be added to an order line.
class frmProdukteExtras : public frmArtikel {
    Q_OBJECT
    Q_PROPERTY(qint64 ProduktExtraID READ key)
  public:
    explicit frmProdukteExtras(const platform::Services& services, QWidget* parent = nullptr);
    ~frmProdukteExtras() override;

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
    std::unique_ptr<Ui::frmProdukteExtras> m_ui;
};
