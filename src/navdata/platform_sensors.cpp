#include "navdata/platform_sensors.h"

DeviceBatteryState theDeviceBatteryState;
