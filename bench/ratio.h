#pragma once

#include <functional>
#include <string>

/// Registers one row of the measurements: what `ours` costs over what `baseline` costs in the same run. Each call does
/// the whole of one piece of work; both do the same amount of it. The closures first run when the row is measured, so
/// that costly scenes are only made for rows that are asked for. Fewer
/// rounds are for baselines that take seconds.
void RegisterRatio(std::string row, std::function<void()> ours, std::string baseline_name,
                   std::function<void()> baseline, int rounds = 31);

/// Runs another program as a baseline, its output thrown away; aborts when it fails.
void RunPeer(const std::string& command);
/// Whether that program is installed.
bool HasPeer(const char* program);
