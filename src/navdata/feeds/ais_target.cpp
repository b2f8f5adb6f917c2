#include "navdata/feeds/ais_target.h"

#include "core/message_sink.h"
#include "core/text.h"
#include "navdata/feeds/ais_target_manager.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <numbers>

namespace {

constexpr QRgb kLostColour = 0xFFFFFFFF;
/// Knots: below, a ship without a heading may lie any way round.
constexpr float kLeastSteerageSpeed = 1.0F;
constexpr std::size_t kLongestDetails = 512;

void SineAndCosine(float degrees, float& sine, float& cosine)
{
    const double radians = static_cast<double>(degrees) * std::numbers::pi / 180.0;
    sine = static_cast<float>(std::sin(radians));
    cosine = static_cast<float>(std::cos(radians));
}

} // namespace

CAISTarget* CAISTarget::selected_target = nullptr;

CAISTarget::CAISTarget(std::uint32_t new_mmsi) : mmsi(new_mmsi), mmsi_text(std::to_string(new_mmsi)) {}

CAISTarget::~CAISTarget()
{
    if (selected_target == this) selected_target = nullptr;
}

void CAISTarget::OnUpdatedPosition()
{
    if (!(std::abs(latitude) <= 90.0)) {
        status = kNoFix;
        return;
    }
    grid.SetOrigin(latitude, longitude);
    const bool has_course = course < CNEMA_AIS::kNoCourse;
    float& heading = compass.heading;
    if (heading == CNEMA_AIS::kNoHeading) heading = has_course && speed > kLeastSteerageSpeed ? course : kNoCourse;
    course_sin = course_cos = heading_sin = heading_cos = 0.0F;
    if (has_course) SineAndCosine(course, course_sin, course_cos);
    if (heading < CNEMA_AIS::kNoHeading) SineAndCosine(heading, heading_sin, heading_cos);
    best_source = kCourseOverGround;
    best_sin = course_sin;
    best_cos = course_cos;
    status = kFix;
}

void CAISTarget::LoseContact()
{
    speed = 0.0F;
    colour = QColor::fromRgba(kLostColour);
    status_text = "Lost contact";
    last_message = kLostContact;
}

bool CAISTarget::isClassB() const
{
    return std::strcmp(class_text, "Class B") == 0;
}

float CAISTarget::CpaLimit() const
{
    return isClassB() ? CAISTargetManager::cpa_classB_distance : CAISTargetManager::cpa_alarm_distance;
}

bool CAISTarget::isCollisionThreat() const
{
    if (!(tcpa > 0.0F) || tcpa > 2.0F * CAISTargetManager::cpa_alarm_time) return false;
    return cpa < 2.0F * CpaLimit();
}

int CAISTarget::onTap(CRastelleView*, const FPoint&, const DblPoint&)
{
    selected_target = this;
    SetStatusMessage(details.empty() ? stringprintf("MMSI:%u, %s\nSpeed:%.1f kts, %s", mmsi, class_text,
                                                    static_cast<double>(speed), status_text)
                                     : details);
    COverlayObject::Dispatch(kLookChanged);
    return 1;
}

void CAISTarget::SetDetails(const char* format, ...)
{
    char text[kLongestDetails];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    details.assign(text); // keeps the room of the text before
}
