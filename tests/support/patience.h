#pragma once

/// How long a test waits for what should happen at once, milliseconds: only a failing test, or a busy machine, uses it.
inline constexpr int kPatience_ms = 30'000;
