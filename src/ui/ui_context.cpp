#include "ui/ui_context.h"

#include <utility>

namespace {
IUiContext* context_in_force = nullptr;
} // namespace

IUiContext* TheUiContext()
{
    return context_in_force;
}

IUiContext* SetUiContext(IUiContext* context)
{
    return std::exchange(context_in_force, context);
}
