#pragma once
#include "platform/form/MasterDataForm.h"
#include <memory>

class QListWidgetItem;

namespace Ui {
class frmEinstellungenBenutzer;
}

/// Keeps the users and their rights.
class frmEinstellungenBenutzer : public platform::MasterDataForm {
    Q_OBJECT
    Q_PROPERTY(qint64 BenutzerID READ key)
  public:
    explicit frmEinstellungenBenutzer(const platform::Services& services, QWidget* parent = nullptr);
    ~frmEinstellungenBenutzer() override;

    void FormatGrid() override;
    /// The key in the mask stays as it is.
    void CleanMask() override;

  protected:
    bool showRecord(qint64 key) override;
    store::RowMark markRecord(qint64 key) const override;
    bool checkInput() override;
    void saveRecord() override;
    bool mayDelete() override;
    void deleteRecord() override;
    void chooseRow(int row) override;

  private:
    void fillPermissions();
    void tickPermissions(const std::function<bool(int row)>& ticked);
    bool permission(int row) const;
    void list_UserPermission_Click(int row);
    void cmdNewUser_Click();
    bool checkNewName(const QString& name);
    void enableMask(bool on);

    std::unique_ptr<Ui::frmEinstellungenBenutzer> m_ui;
};
