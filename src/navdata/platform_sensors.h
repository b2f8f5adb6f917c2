#pragma once

/// What a platform with such sensors tells, each through Listener<T>. No part of this program produces them.

struct CDataBarometer {
    static constexpr float kNoAltitude = -9999.0F;
    float pressure = 0.0F;        ///< kilopascals; 0: none
    float altitude = kNoAltitude; ///< metres, relative; kNoAltitude or less: none
};

struct DeviceBatteryState {
    enum State { kUnknown = 0, kCharging = 1, kFull = 2, kDischarging = 3 };
    State state = kUnknown;
    double level = 0.0; ///< 0 to 1
};
extern DeviceBatteryState theDeviceBatteryState;

/// Of a mast that turns with the sail.
struct CMastRotation {
    float rotation = 0.0F; ///< degrees, to starboard
};
