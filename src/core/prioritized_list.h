#pragma once

/// A circular doubly linked list in descending priority; among equals the newest goes last.
class CPrioritizedList {
public:
    struct Node {
        Node* next = nullptr;
        Node* previous = nullptr;
        int priority = 0;
    };

    CPrioritizedList();
    CPrioritizedList(const CPrioritizedList&) = delete;
    CPrioritizedList& operator=(const CPrioritizedList&) = delete;

    void Enqueue(Node* node);
    /// The head, taken off; null for an empty list.
    Node* Dequeue();
    bool empty() const { return sentinel.next == &sentinel; }
    Node* first() { return sentinel.next; }
    /// The sentinel: it stands before the head and behind the tail.
    Node* end() { return &sentinel; }
    bool isEnd(const Node* node) const { return node == &sentinel; }

private:
    Node sentinel;
};
