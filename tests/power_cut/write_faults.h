#pragma once

/// What happens to a process at one of its steps towards the disk: opening for writing, writing, flushing, cutting off,
/// renaming, removing, making a folder.
enum class WriteFault {
    kNone,     ///< steps are only counted
    kKill,     ///< the process is killed instead of the step
    kTorn,     ///< half of the bytes are written, then the process is killed
    kPowerCut, ///< it is killed, and what was written but not flushed is lost
    kFull,     ///< from this step on the disk is full
    kError     ///< this step fails with an I/O error
};

/// Of the library libzt_write_faults.so, which is there when it is preloaded. Begins to count the steps of this process
/// anew; `fault` comes at step `at`, counted from 0.
extern "C" void zt_arm_write_fault(WriteFault fault, long at) __attribute__((weak));
/// The steps since.
extern "C" long zt_write_steps() __attribute__((weak));
