#include "navdata/start_timer.h"

#include "core/listener.h"
#include "core/persistant_data.h"

CDataStartTimer CDataStartTimer::theStartTime;

class CDataStartTimer::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CDataStartTimer") {}

    void DeclareData() override
    {
        Declare("time_of_start", theStartTime.time_of_start);
        Declare("period_minutes", theStartTime.period_minutes);
        Declare("after_start_layout", theStartTime.after_start_layout);
        Declare("new_track_at_start", theStartTime.new_track_at_start);
    }

    static Persistant start_timer_settings;
};

CDataStartTimer::Persistant CDataStartTimer::Persistant::start_timer_settings;

void CDataStartTimer::Changed()
{
    DispatchToListeners(theStartTime);
    Persistant::start_timer_settings.SetModified();
    PersistantData::SaveAll();
}
