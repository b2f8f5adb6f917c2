#include "core/prioritized_list.h"

CPrioritizedList::CPrioritizedList()
{
    sentinel.next = &sentinel;
    sentinel.previous = &sentinel;
    sentinel.priority = 0x7FFFFFFF;
}

void CPrioritizedList::Enqueue(Node* node)
{
    Node* behind = sentinel.previous;
    while (behind->priority < node->priority) behind = behind->previous;
    node->next = behind->next;
    node->previous = behind;
    behind->next->previous = node;
    behind->next = node;
}

CPrioritizedList::Node* CPrioritizedList::Dequeue()
{
    if (empty()) return nullptr;
    Node* head = sentinel.next;
    sentinel.next = head->next;
    head->next->previous = &sentinel;
    return head;
}
