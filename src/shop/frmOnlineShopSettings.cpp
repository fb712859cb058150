#include "shop/frmOnlineShopSettings.h"
#include "common/Guard.h"
#include "desks/MainDesks.h"
#include "platform/Navigation.h"
#include <QAbstractButton>

namespace frmOnlineShopSettings {

void setUpInternet(QAbstractButton& cmdInternet, const platform::Services& services) {
    const QString screen = QStringLiteral("frmOnlineShopTransfer");
    cmdInternet.setEnabled(services.navigation.hasScreen(screen));
    common::connectGuarded(common::Origin::User, &cmdInternet, &QAbstractButton::clicked, &cmdInternet,
                           [&navigation = services.navigation, screen] { navigation.showScreen(screen); });
}

void note(const platform::Services& services, const QString& message) {
    desks::showMessage(services.navigation, message);
}

} // namespace frmOnlineShopSettings
