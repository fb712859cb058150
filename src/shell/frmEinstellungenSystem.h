#pragma once
#include "platform/Services.h"
#include <QWidget>
#include <memory>
#include <vector>

class QLineEdit;

namespace store {
struct Setting;
}

namespace Ui {
class frmEinstellungenSystem;
}

/// The settings of the firm. There is no cancelling: whatever closes the window takes all controls over into
/// the globals, which the whole program reads, and into the store. Only the slip's template counts at once.
///
/// Bad numbers are reset without a word. What is changed elsewhere meanwhile is followed.
class frmEinstellungenSystem : public QWidget {
    Q_OBJECT
  public:
    explicit frmEinstellungenSystem(const platform::Services& services, QWidget* parent = nullptr);
    ~frmEinstellungenSystem() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    /// A setting and its control; `shown` is what stood in it before the user came, `stored` the setting
    /// then.
    struct Row {
        const store::Setting& setting;
        QWidget& control;
        QString shown, stored;
    };

    void fillLists();
    void setUpRows();
    void setUpField(const store::Setting& setting, QLineEdit& field);
    void showRow(Row& row);
    /// Shows what was changed elsewhere, as far as the user has not touched it here.
    void follow();
    void takeOver();
    void restrictEditierung();
    void cmdPreview_Click();

    platform::Services m_services;
    std::unique_ptr<Ui::frmEinstellungenSystem> m_ui;
    std::vector<Row> m_rows; ///< in the order in which they are taken over
    bool m_taken = false;
};
