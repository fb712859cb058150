#include "shop/frmOnlineShopSettings.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "platform/Navigation.h"
#include <QAbstractButton>
#include <QComboBox>

namespace frmOnlineShopSettings {

void setUpInternet(QAbstractButton& cmdInternet, const platform::Services& services) {
    const QString screen = QStringLiteral("frmOnlineShopTransfer");
    cmdInternet.setEnabled(services.navigation.hasScreen(screen));
    common::connectGuarded(common::Origin::User, &cmdInternet, &QAbstractButton::clicked, &cmdInternet,
                           [&navigation = services.navigation, screen] { navigation.showScreen(screen); });
}

void fillSteps(QComboBox& list, int first, int last, int step) {
    for (int number = first; number <= last; number += step)
        list.addItem(common::formatNumber(number, u"00"));
}

} // namespace frmOnlineShopSettings
