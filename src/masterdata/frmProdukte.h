#pragma once
#include "masterdata/frmArtikel.h"
#include "masterdata/modProdukte.h"
#include <memory>

class frmProdukteBild;

namespace Ui {
class frmProdukte;
}

/// Keeps the catalogue. The list shows the products of one category.
class frmProdukte : public frmArtikel {
    Q_OBJECT
    Q_PROPERTY(qint64 ProduktID READ key)
  public:
    explicit frmProdukte(const platform::Services& services, QWidget* parent = nullptr);
    ~frmProdukte() override;

    /// Category and position number carry over to the next new record.
    void CleanMask() override;

  protected:
    bool showRecord(qint64 key) override;
    store::RowMark markRecord(qint64 key) const override;
    bool checkInput() override;
    void saveRecord() override;
    bool mayDelete() override;
    void deleteRecord() override;
    QString listFilter() const override;

  private:
    void fillCategories();
    void fillExtras();
    void setUpPictures();
    void choosePicture(frmProdukteBild& box, const QString& tooBig);
    void ShowProduktBilder(const modProdukte::Produkt& produkt);
    void chooseExtras(const QList<qint64>& keys);
    QList<qint64> chosenExtras() const;
    modProdukte::Produkt maskContent() const;

    std::unique_ptr<Ui::frmProdukte> m_ui;
    /// On offer in the list.
    std::vector<store::Eintrag> m_extras;
};
