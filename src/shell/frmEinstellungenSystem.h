#pragma once
#include "platform/Services.h"
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace Ui {
class frmEinstellungenSystem;
}

/// The settings of the firm. There is no cancelling: whatever closes the window takes all controls over into
/// the globals, which the whole program reads, and into the store. Only the slip's template counts at once.
///
/// Bad numbers are reset without a word.
class frmEinstellungenSystem : public QWidget {
    Q_OBJECT
  public:
    explicit frmEinstellungenSystem(const platform::Services& services, QWidget* parent = nullptr);
    ~frmEinstellungenSystem() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    /// A control and the global behind it; it shows the global at once.
    struct Setting {
        std::function<void()> show, take;
    };

    void add(std::function<void()> show, std::function<void()> take);
    void addText(QLineEdit& field, QString& global);
    void addRate(QLineEdit& field, double& global);
    void addWord(QComboBox& list, QString& global);
    void addPrinter(QComboBox& list, QString& global);
    template <typename Number> void addFlag(QCheckBox& box, Number& global);
    template <typename Number>
    void addNumber(QComboBox& list, Number& global, const QString& form = QStringLiteral("0"));

    void fillLists();
    void addPrinters();
    void addSlip();
    void addTimes();
    void addPreOrders();
    void addSystem();
    void addFiktiverTag();
    void addTrxNr();
    void restrictEditierung();
    void cmdPreview_Click();

    platform::Services m_services;
    std::unique_ptr<Ui::frmEinstellungenSystem> m_ui;
    std::vector<Setting> m_settings; ///< in the order in which they are taken over
    bool m_taken = false;
};
