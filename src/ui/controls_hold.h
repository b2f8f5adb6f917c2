#pragma once

/// Keeps the controls of the window from fading while something lies over it. Taking and releasing twice counts once,
/// so that the pair of the context stays balanced; what is still held at the end is released. Main thread only.
class CControlsHold {
public:
    CControlsHold() = default;
    CControlsHold(const CControlsHold&) = delete;
    CControlsHold& operator=(const CControlsHold&) = delete;
    ~CControlsHold() { Release(); }

    void Take();
    void Release();

private:
    bool held = false;
};
