#pragma once

#include "chart/dib_square.h"

/// A doubly linked list of squares, linked through themselves so that nothing is allocated to move one. The head is the
/// most recently useful square, the tail the next to be reused. Owns its squares.
class Dib_List {
public:
    Dib_List() = default;
    Dib_List(const Dib_List&) = delete;
    Dib_List& operator=(const Dib_List&) = delete;
    ~Dib_List() { Clear(); }

    /// Adds new empty squares at the tail until `count` of them live, `elsewhere` of which are not in the list.
    void Populate(int count, int elsewhere);
    void PushHead(DIB_square* square);
    void PushTail(DIB_square* square);
    void MoveToHead(DIB_square* square);
    /// Takes a square out; the caller owns it then.
    void Remove(DIB_square* square);
    void Clear();

    DIB_square* Head() const { return head; }
    DIB_square* Tail() const { return tail; }
    int Count() const { return count; }

private:
    DIB_square* head = nullptr;
    DIB_square* tail = nullptr;
    int count = 0;
};
