#pragma once
#include "masterdata/Artikel.h"
#include "platform/form/MasterDataForm.h"

class QCheckBox;
class QComboBox;
class frmGruppenPreise;

/// The form of products and extras: the mask keeps packaging, position, flags and ten prices beside the
/// screen's own fields, the list shows one price group and one status at a time.
class frmArtikel : public platform::MasterDataForm {
    Q_OBJECT
  public:
    /// Runs the query; does nothing as long as listFilter() chooses nothing.
    void FormatGrid() override;

  protected:
    using MasterDataForm::MasterDataForm;

    /// Takes the shared controls by their names from the layout, fills their lists and puts them to work.
    /// `internet` is the check box of flag_Internet; positions go from 1 to `positions`. The columns of the
    /// list are the screen's own and, behind them, those that both lists have.
    void setUpArtikel(QCheckBox& internet, int positions, const QString& listQuery,
                      std::vector<platform::DataColumn> ownColumns);

    /// What the list shows of its rows; "" for nothing yet.
    virtual QString listFilter() const;

    /// The position stays.
    void cleanArtikel();
    void showArtikel(const masterdata::Artikel& artikel);
    masterdata::Artikel artikel() const;
    /// The check of the ten prices.
    bool pricesGiven();

    frmGruppenPreise& preise() { return *m_preise; }

  private:
    void takeControls();
    void fillLists(int positions);

    QString m_listQuery;
    std::vector<platform::DataColumn> m_columns;
    QComboBox* m_stueckelung = nullptr;
    QComboBox* m_einheit = nullptr;
    QComboBox* m_reihenfolge = nullptr;
    QCheckBox* m_internet = nullptr;
    QCheckBox* m_status = nullptr;
    QComboBox* m_sortGruppe = nullptr;
    QCheckBox* m_sortStatus = nullptr;
    frmGruppenPreise* m_preise = nullptr;
};
