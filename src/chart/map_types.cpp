#include "chart/map_types.h"

#include "core/persistant_data.h"

namespace {

const std::set<std::string> kShownByDefault = {"Topo", "4WD", "Basemap"};

} // namespace

std::set<std::string> CSelectMapTypes::show = kShownByDefault;
bool CSelectMapTypes::types_hint = false;
int CSelectMapTypes::CHB_storage_option = 0;
std::string CSelectMapTypes::CHB_external_folder;

class CSelectMapTypes::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CSelectMapTypes") {}

    void DeclareData() override
    {
        Declare("show", show);
        Declare("types_hint", types_hint);
        Declare("CHB_storage_option", CHB_storage_option);
        Declare("CHB_external_folder", CHB_external_folder);
        if (!s_saving && show.empty()) show = kShownByDefault;
    }

    static Persistant group_object;
};

CSelectMapTypes::Persistant CSelectMapTypes::Persistant::group_object;

void CSelectMapTypes::SetModified()
{
    Persistant::group_object.SetModified();
}
