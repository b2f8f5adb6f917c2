#include "ui/saveable.h"

CSaveable* CSaveable::first = nullptr;

CSaveable::CSaveable() : next_open(first)
{
    if (next_open != nullptr) next_open->previous_open = this;
    first = this;
}

CSaveable::~CSaveable()
{
    if (next_open != nullptr) next_open->previous_open = previous_open;
    (previous_open != nullptr ? previous_open->next_open : first) = next_open;
}

void CSaveable::SaveAllOpen()
{
    for (CSaveable* open = first; open != nullptr; open = open->next_open) open->Save();
}
