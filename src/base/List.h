#pragma once

// Doubly linked list threaded through members `next` and `previous` of its nodes. It owns nothing:
// whoever made a node frees it after removing it. All operations are O(1).
template <class Node> struct List {
    Node* head = nullptr;
    Node* tail = nullptr;

    bool IsEmpty() const { return head == nullptr; }

    void Append(Node* node) { InsertAfter(tail, node); }
    void Prepend(Node* node) { InsertAfter(nullptr, node); }

    // Links `node` after `after`, or at the head when `after` is null.
    void InsertAfter(Node* after, Node* node) {
        Node* following = after ? after->next : head;
        node->previous = after;
        node->next = following;
        (after ? after->next : head) = node;
        (following ? following->previous : tail) = node;
    }

    void Remove(Node* node) {
        (node->previous ? node->previous->next : head) = node->next;
        (node->next ? node->next->previous : tail) = node->previous;
        node->next = node->previous = nullptr;
    }

    // Unlinks and returns the first node; null when the list is empty.
    Node* TakeHead() {
        Node* node = head;
        if (node) Remove(node);
        return node;
    }
};
