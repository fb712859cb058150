#pragma once
#include "masterdata/Artikel.h"
#include <QGroupBox>
#include <array>

class QComboBox;
class QLineEdit;

/// The frame of the ten prices with their VAT codes: txt_Preis_1 to 10 and combo_MWSt_1 to 10. Enter goes
/// round among the prices and among the codes. A price rewrites itself when it is left, "0.00" for what is no
/// number. The rates are those in force when the frame was made.
class frmGruppenPreise : public QGroupBox {
    Q_OBJECT
  public:
    explicit frmGruppenPreise(QWidget* parent = nullptr);

    /// All prices "0.00", all codes 0.
    void clear();
    void setPrices(const masterdata::GruppenPreise& prices);
    /// A price that is no number counts as 0.
    masterdata::GruppenPreise prices() const;
    /// The first price that is none: no number, or more than a till can mean. Null when all are good.
    QLineEdit* faulty() const;

    /// Price group counted from 1.
    QLineEdit* txt_Preis(int gruppe) const { return m_prices.at(size_t(gruppe - 1)); }

  private:
    void addGroup(int gruppe, const QStringList& mwst);

    std::array<QLineEdit*, masterdata::kPriceGroups> m_prices{};
    std::array<QComboBox*, masterdata::kPriceGroups> m_codes{};
};
