#pragma once
#include "platform/Services.h"
#include "shop/modOnlineShopSettingsFonts.h"
#include <QWidget>
#include <functional>
#include <memory>

class QImage;
class QLabel;

namespace Ui {
class frmOnlineShopSettingsFonts;
}

/// Colours, title picture and title of the web shop, and how the customer sees them. The fields that show a
/// colour or the picture's name keep its hexadecimal text or its extension in their property "Tag".
class frmOnlineShopSettingsFonts : public QWidget {
    Q_OBJECT
  public:
    explicit frmOnlineShopSettingsFonts(const platform::Services& services, QWidget* parent = nullptr);
    ~frmOnlineShopSettingsFonts() override;

  protected:
    /// Drops a picture that was chosen and not saved.
    void closeEvent(QCloseEvent* event) override;

  private:
    using Farbe = modOnlineShopSettingsFonts::Farbe;

    void setUpButtons();
    /// The identity in force.
    void showStored();
    void showIdentity(const modOnlineShopSettingsFonts::CorporateIdentity& identity);
    void chooseColor(Farbe& color);
    void cmdHintergrundbild_Click();
    void cmdDefault_Click();
    void cmdSave_Click();
    void showColors();
    /// The picture of the file, or why there is none.
    void showPicture(const QString& fileName);
    void setPicture(const QString& fileName);
    QString extension() const;
    void tell(const QString& text, const QString& caption);
    /// Runs what moves picture files; tells what failed, with the screen as it was. False then.
    bool tellingFailure(const std::function<void()>& act);

    platform::Services m_services;
    std::unique_ptr<Ui::frmOnlineShopSettingsFonts> m_ui;
    Farbe m_balken, m_schrift;
    /// Extensions of the working copies that are not saved.
    store::RowMark m_mark;
    QStringList m_unsaved;
};
