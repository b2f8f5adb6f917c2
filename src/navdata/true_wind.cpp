#include "navdata/true_wind.h"

#include "core/persistant_data.h"

CDataTrueWind theTrueWind(10.0F, 600.0F);
CDataTrueWind theAverageTrueWind(300.0F, 1800.0F);

namespace {

class TrueWindPersistant : public PersistantData {
public:
    TrueWindPersistant() : PersistantData("CDataTrueWind") {}

    void DeclareData() override
    {
        Declare("time_constant", theTrueWind.time_constant);
        Declare("avg_wind_time_constant", theAverageTrueWind.time_constant);
        if (s_saving) return;
        theTrueWind.SetTimeConstant(theTrueWind.time_constant);
        theAverageTrueWind.SetTimeConstant(theAverageTrueWind.time_constant);
    }
};

TrueWindPersistant true_wind_persistant;

} // namespace
