#pragma once

class CSyncable;

/// Tells when a deleted object may leave its file: at once when the server never hears of it, and otherwise 14 days
/// after the deletion. Ages count only while the clock can be believed: a receiver or a battery that puts the date
/// wrong must not make deletions forgotten.
class CTombstoneAges {
public:
    /// Notes the time; to be made, or assigned, when the file is loaded.
    CTombstoneAges();
    /// Whether the object is deleted and need not be kept any longer.
    bool IsSpent(const CSyncable& object) const;
    /// Whether the clock went otherwise, by more than a day, than the time that has really passed.
    bool ClockJumped() const;

private:
    double clock_then;  ///< seconds since 1970
    double uptime_then; ///< seconds since the machine started, asleep or not
};
