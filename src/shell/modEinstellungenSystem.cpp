#include "shell/modEinstellungenSystem.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace modEinstellungenSystem {

void SaveSystemSettings() {
    {
        const store::WriteRecordset row(RsMain, u"SELECT * FROM tbl_Einstellungen_System;"_s, ConnMain);
        if (row->Eof())
            return;
        for (const store::Setting& setting : store::settings())
            std::visit([&](const auto* value) { row->Fields(setting.column) = *value; }, setting.value);
        row->Update();
    }
    Q_EMIT store::settingsNews().changed();
}

} // namespace modEinstellungenSystem
