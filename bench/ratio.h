#pragma once

#include <functional>
#include <string>

/// Registers one row of the measurements: what `ours` costs over what `baseline` costs in the same run. Each call does
/// the whole of one piece of work; both do the same amount of it. The closures first run when the row is measured, so
/// that costly scenes are only made for rows that are asked for.
void RegisterRatio(std::string row, std::function<void()> ours, std::string baseline_name,
                   std::function<void()> baseline);
