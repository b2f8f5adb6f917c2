#include "navdata/feeds/feed_true_wind.h"

#include "navdata/true_wind.h"

Feed_TrueWind_from_MWD Feed_TrueWind_from_MWD::the_feed;

namespace {

void Take(const CNMEA_Instruments::MWD& sentence, double time, CDataTrueWind& wind)
{
    wind.Set(sentence.direction, sentence.speed, time);
    wind.speed_range.SetValue(wind.speed, time);
    wind.direction_range.SetValue(wind.direction, time);
}

} // namespace

void Feed_TrueWind_from_MWD::OnUpdate(CNMEA_Instruments::MWD& sentence)
{
    const double time = Listener<CNMEA_Instruments::MWD>::pDatasource->Timestamp();
    Take(sentence, time, theTrueWind);
    Take(sentence, time, theAverageTrueWind);
    DispatchToListeners(theTrueWind);
}
