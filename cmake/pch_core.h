// Precompiled: what nearly every source of the rooms without an interface includes.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QString>
