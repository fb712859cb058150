#pragma once
#include "platform/Services.h"
#include "shop/modOnlineShopSettingsBestellzeiten.h"
#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;

namespace Ui {
class frmOnlineShopSettingsBestellzeiten;
}

/// The hours in which the web shop takes orders, a row a weekday, and whether it is open at all. It reaches
/// the shop with the next upload.
class frmOnlineShopSettingsBestellzeiten : public QWidget {
    Q_OBJECT
  public:
    explicit frmOnlineShopSettingsBestellzeiten(const platform::Services& services,
                                                QWidget* parent = nullptr);
    ~frmOnlineShopSettingsBestellzeiten() override;

  private:
    /// The controls of one period: its times in the order of Periode::zeiten, and the closed box.
    struct PeriodeControls {
        std::array<QComboBox*, 4> zeiten;
        QCheckBox* geschlossen;
    };

    struct Tag {
        PeriodeControls midday, evening;
    };

    void setUpTage();
    /// Adds the controls behind the column; their names end in the number of the weekday.
    PeriodeControls addPeriode(int tag, int column, const QString& name, const QString& spoken);
    void setUpMinuten(QLineEdit& field, const QString& faulty);
    void setUpTabs();
    void showZeiten(const modOnlineShopSettingsBestellzeiten::Bestellzeiten& zeiten);
    modOnlineShopSettingsBestellzeiten::Bestellzeiten content() const;
    void cmdSave_Click();
    /// Tells what was wrong with the field that was left last. False when nothing was.
    bool complain();

    platform::Services m_services;
    std::unique_ptr<Ui::frmOnlineShopSettingsBestellzeiten> m_ui;
    std::array<Tag, 7> m_tage{};
    store::RowMark m_mark;
    QString m_complaint;
};
