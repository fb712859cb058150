#pragma once
#include "platform/Services.h"
#include "store/RowMark.h"
#include <QWidget>
#include <memory>

class QTreeWidgetItem;

namespace Ui {
class frmOnlineShopSettingsDokumente;
}

/// The texts of the web shop and of its confirmation mail, chosen in a tree.
class frmOnlineShopSettingsDokumente : public QWidget {
    Q_OBJECT
  public:
    explicit frmOnlineShopSettingsDokumente(const platform::Services& services, QWidget* parent = nullptr);
    ~frmOnlineShopSettingsDokumente() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void fillTree();
    void setUpButtons();
    void TreeView_NodeClick(const QTreeWidgetItem& node);
    /// Loads the firm's document.
    void ActiveMenuSelection(const QString& key);
    void cmdDefault_Click();
    void SaveDokument();
    /// Asks before a text that is not saved goes; false where it has to stay.
    bool askForUnsaved();
    void markChosenNode();
    bool isUnsaved() const;
    void setDokumentText(const QString& text);

    platform::Services m_services;
    std::unique_ptr<Ui::frmOnlineShopSettingsDokumente> m_ui;
    /// Key of the chosen document, "" at a root, and its text as it is stored.
    QString m_key, m_stored;
    store::RowMark m_mark;
};
