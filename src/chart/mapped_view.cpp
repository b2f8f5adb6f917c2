#include "chart/mapped_view.h"

#include <array>
#include <atomic>
#include <csignal>
#include <mutex>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// The views in force, for the signal handler: it may only read atomics.
struct GuardedRange {
    std::atomic<bool> taken{false};
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::uintptr_t> end{0};
};
constexpr std::size_t kMostGuarded = 512; // two views a chart; views beyond that are not guarded
std::array<GuardedRange, kMostGuarded> guarded;
struct sigaction previous_action;
std::uintptr_t page_size = 4096;

bool FillLostPage(std::uintptr_t address)
{
    for (const GuardedRange& range : guarded) {
        if (address < range.begin.load() || address >= range.end.load()) continue;
        void* page = reinterpret_cast<void*>(address & ~(page_size - 1));
        return mmap(page, page_size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED;
    }
    return false;
}

void OnBusError(int number, siginfo_t* info, void* context)
{
    if (FillLostPage(reinterpret_cast<std::uintptr_t>(info->si_addr))) return;
    if ((previous_action.sa_flags & SA_SIGINFO) != 0) {
        previous_action.sa_sigaction(number, info, context);
    } else if (previous_action.sa_handler != SIG_DFL && previous_action.sa_handler != SIG_IGN) {
        previous_action.sa_handler(number);
    } else {
        sigaction(number, &previous_action, nullptr); // the access repeats, now with what was set before us
    }
}

void InstallGuard()
{
    page_size = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    struct sigaction action = {};
    action.sa_sigaction = OnBusError;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    sigaction(SIGBUS, &action, &previous_action);
}

void Guard(const void* data, std::size_t length)
{
    static std::once_flag installed;
    std::call_once(installed, InstallGuard);
    const auto begin = reinterpret_cast<std::uintptr_t>(data);
    for (GuardedRange& range : guarded) {
        if (range.taken.exchange(true)) continue;
        range.begin = begin;
        range.end = begin + length;
        return;
    }
}

void Unguard(const void* data)
{
    const auto begin = reinterpret_cast<std::uintptr_t>(data);
    for (GuardedRange& range : guarded) {
        if (!range.taken || range.begin != begin) continue;
        range.end = 0;
        range.begin = 0;
        range.taken = false;
        return;
    }
}

} // namespace

bool CMappedView::Map(int file, std::uint64_t start, std::size_t new_length)
{
    Unmap();
    if (new_length == 0) return false;
    void* mapped = mmap(nullptr, new_length, PROT_READ, MAP_PRIVATE, file, static_cast<off_t>(start));
    if (mapped == MAP_FAILED) return false;
    data = static_cast<const std::uint8_t*>(mapped);
    length = new_length;
    Guard(data, length);
    return true;
}

void CMappedView::Unmap()
{
    if (data == nullptr) return;
    Unguard(data);
    munmap(const_cast<std::uint8_t*>(data), length);
    data = nullptr;
    length = 0;
}
