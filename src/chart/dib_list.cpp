#include "chart/dib_list.h"

void Dib_List::Populate(int wanted, int elsewhere)
{
    while (count + elsewhere < wanted) PushTail(new DIB_square);
}

void Dib_List::PushHead(DIB_square* square)
{
    square->newer = nullptr;
    square->older = head;
    (head != nullptr ? head->newer : tail) = square;
    head = square;
    ++count;
}

void Dib_List::PushTail(DIB_square* square)
{
    square->older = nullptr;
    square->newer = tail;
    (tail != nullptr ? tail->older : head) = square;
    tail = square;
    ++count;
}

void Dib_List::MoveToHead(DIB_square* square)
{
    if (square == head) return;
    Remove(square);
    PushHead(square);
}

void Dib_List::Remove(DIB_square* square)
{
    (square->newer != nullptr ? square->newer->older : head) = square->older;
    (square->older != nullptr ? square->older->newer : tail) = square->newer;
    square->newer = nullptr;
    square->older = nullptr;
    --count;
}

void Dib_List::Clear()
{
    while (head != nullptr) {
        DIB_square* square = head;
        Remove(square);
        delete square;
    }
}
