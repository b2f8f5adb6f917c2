#include "nmea/data_connection.h"
#include "ui/action_sheet.h"

#include <memory>
#include <utility>

namespace {

/// The one answer of a menu. The entries share it: when the menu goes, and they with it, without a choice, the answer
/// is no.
class CMenuAnswer {
public:
    explicit CMenuAnswer(std::function<void(bool)> done) : m_done(std::move(done)) {}
    CMenuAnswer(const CMenuAnswer&) = delete;
    CMenuAnswer& operator=(const CMenuAnswer&) = delete;
    ~CMenuAnswer()
    {
        if (m_done) m_done(false);
    }
    std::function<void(bool)> Take() { return std::exchange(m_done, nullptr); }

private:
    std::function<void(bool)> m_done;
};

} // namespace

void CDataConnection::SelectConnectionType(ZT_HWND view, const std::function<void(bool)>& done)
{
    const auto answer = std::make_shared<CMenuAnswer>(done);
    CActionSheetMenu menu("GPS Connection");
    for (CConnectionType* row = CConnectionType::first_type; row != nullptr; row = row->next) {
        if (row->id <= 0) continue;
        const int appearance = row->id == gps_connection_type ? Appearance::kCurrent : Appearance::kNormal;
        const auto choose = [view, row, answer] { onConnectionSelected(view, row, answer->Take()); };
        menu.Add(row->name, choose, {}, appearance);
    }
    menu.ShowMenu(view);
}
