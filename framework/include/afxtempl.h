// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <type_traits>
#include <vector>

#include "afx.h"

/// How an array's or list's elements are archived: as their bytes, unless a program specialises it for its
/// type.
template <typename TYPE>
void SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount) {
    static_assert(std::is_trivially_copyable_v<TYPE>, "specialise SerializeElements for this element type");
    for (; nCount > 0; ++pElements, --nCount) {
        if (ar.IsStoring()) {
            ar.Write(pElements, sizeof(TYPE));
        } else {
            ar.EnsureRead(pElements, sizeof(TYPE));
        }
    }
}

template <>
inline void SerializeElements<CString>(CArchive& ar, CString* pElements, INT_PTR nCount) {
    for (; nCount > 0; ++pElements, --nCount) {
        if (ar.IsStoring()) {
            ar << *pElements;
        } else {
            ar >> *pElements;
        }
    }
}

/// A growing array. An index outside it throws `CInvalidArgException*`.
template <typename TYPE, typename ARG_TYPE = const TYPE&>
class CArray : public CObject {
    static_assert(!std::is_same_v<TYPE, bool>, "use BOOL or BYTE for elements");

public:
    CArray() = default;

    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_items.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    BOOL IsEmpty() const { return m_items.empty(); }
    /// New elements are value-initialised. The step of growth is left to the array.
    void SetSize(INT_PTR nNewSize, INT_PTR /*nGrowBy*/ = -1) {
        if (nNewSize < 0) AfxThrowInvalidArgException();
        m_items.resize(static_cast<size_t>(nNewSize));
    }
    void FreeExtra() { m_items.shrink_to_fit(); }
    void RemoveAll() { m_items.clear(); }

    const TYPE& GetAt(INT_PTR nIndex) const { return m_items[checked(nIndex)]; }
    TYPE& GetAt(INT_PTR nIndex) { return m_items[checked(nIndex)]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_items[checked(nIndex)]; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return m_items[checked(nIndex)]; }
    const TYPE& operator[](INT_PTR nIndex) const { return m_items[checked(nIndex)]; }
    TYPE& operator[](INT_PTR nIndex) { return m_items[checked(nIndex)]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_items[checked(nIndex)] = newElement; }
    const TYPE* GetData() const { return m_items.data(); }
    TYPE* GetData() { return m_items.data(); }

    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement) {
        const TYPE element(newElement); // may lie in this array, which is about to move
        if (nIndex >= GetSize()) SetSize(nIndex + 1);
        m_items[checked(nIndex)] = element;
    }
    /// Returns the index of the (first) new element.
    INT_PTR Add(ARG_TYPE newElement) {
        m_items.push_back(TYPE(newElement));
        return GetUpperBound();
    }
    INT_PTR Append(const CArray& src) {
        const INT_PTR first = GetSize();
        const std::vector<TYPE> items(src.m_items);
        m_items.insert(m_items.end(), items.begin(), items.end());
        return first;
    }
    void Copy(const CArray& src) { m_items = src.m_items; }

    /// An index past the end first lengthens the array to it.
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1) {
        if (nIndex < 0 || nCount < 0) AfxThrowInvalidArgException();
        const TYPE element(newElement);
        if (nIndex > GetSize()) SetSize(nIndex);
        m_items.insert(m_items.begin() + nIndex, static_cast<size_t>(nCount), element);
    }
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1) {
        if (nIndex < 0 || nCount < 0 || nCount > GetSize() || nIndex > GetSize() - nCount)
            AfxThrowInvalidArgException();
        m_items.erase(m_items.begin() + nIndex, m_items.begin() + nIndex + nCount);
    }

    /// A count and the elements. Loading replaces the contents once all has been read.
    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) {
            ar.WriteCount(static_cast<DWORD_PTR>(m_items.size()));
            if (!m_items.empty()) SerializeElements<TYPE>(ar, m_items.data(), GetSize());
            return;
        }
        std::vector<TYPE> read;
        for (DWORD_PTR left = ar.ReadCount(); left > 0;) {
            const auto piece = std::min<DWORD_PTR>(left, 1024); // a count proves nothing about what follows
            const size_t before = read.size();
            read.resize(before + piece);
            SerializeElements<TYPE>(ar, read.data() + before, static_cast<INT_PTR>(piece));
            left -= piece;
        }
        m_items.swap(read);
    }

private:
    size_t checked(INT_PTR nIndex) const {
        if (nIndex < 0 || nIndex >= GetSize()) AfxThrowInvalidArgException();
        return static_cast<size_t>(nIndex);
    }

    std::vector<TYPE> m_items;
};

/// A doubly linked list. A position stays good until its element is removed; a null one throws
/// `CInvalidArgException*`, as does taking from an empty list.
template <typename TYPE, typename ARG_TYPE = const TYPE&>
class CList : public CObject {
    struct Node : __POSITION {
        Node* next;
        Node* previous;
        TYPE data;
    };

public:
    explicit CList(INT_PTR /*nBlockSize*/ = 10) {}
    ~CList() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_count; }
    INT_PTR GetSize() const { return m_count; }
    BOOL IsEmpty() const { return m_count == 0; }
    POSITION GetHeadPosition() const { return m_head; }
    POSITION GetTailPosition() const { return m_tail; }
    TYPE& GetHead() { return node(m_head)->data; }
    const TYPE& GetHead() const { return node(m_head)->data; }
    TYPE& GetTail() { return node(m_tail)->data; }
    const TYPE& GetTail() const { return node(m_tail)->data; }
    TYPE& GetAt(POSITION position) { return node(position)->data; }
    const TYPE& GetAt(POSITION position) const { return node(position)->data; }
    void SetAt(POSITION position, ARG_TYPE newElement) { node(position)->data = newElement; }
    /// The element at the position, which moves on, to null past the end.
    TYPE& GetNext(POSITION& rPosition) { return step(rPosition, &Node::next); }
    const TYPE& GetNext(POSITION& rPosition) const { return step(rPosition, &Node::next); }
    TYPE& GetPrev(POSITION& rPosition) { return step(rPosition, &Node::previous); }
    const TYPE& GetPrev(POSITION& rPosition) const { return step(rPosition, &Node::previous); }

    POSITION AddHead(ARG_TYPE newElement) { return link(newElement, m_head); }
    POSITION AddTail(ARG_TYPE newElement) { return link(newElement, nullptr); }
    POSITION InsertBefore(POSITION position, ARG_TYPE newElement) { return link(newElement, node(position)); }
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement) {
        return link(newElement, node(position)->next);
    }
    TYPE RemoveHead() { return take(m_head); }
    TYPE RemoveTail() { return take(m_tail); }
    void RemoveAt(POSITION position) { take(position); }
    void RemoveAll() {
        while (m_head != nullptr)
            take(m_head);
    }

    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const {
        for (Node* at = startAfter == nullptr ? m_head : node(startAfter)->next; at != nullptr;
             at = at->next) {
            if (at->data == searchValue) return at;
        }
        return nullptr;
    }
    POSITION FindIndex(INT_PTR nIndex) const {
        if (nIndex < 0 || nIndex >= m_count) return nullptr;
        Node* at = m_head;
        while (nIndex-- > 0)
            at = at->next;
        return at;
    }

    /// A count and the elements; loading appends them.
    void Serialize(CArchive& ar) override {
        if (ar.IsStoring()) {
            ar.WriteCount(static_cast<DWORD_PTR>(m_count));
            for (Node* at = m_head; at != nullptr; at = at->next)
                SerializeElements<TYPE>(ar, &at->data, 1);
            return;
        }
        for (DWORD_PTR left = ar.ReadCount(); left > 0; --left) {
            TYPE element{};
            SerializeElements<TYPE>(ar, &element, 1);
            AddTail(element);
        }
    }

private:
    static Node* node(POSITION position) {
        if (position == nullptr) AfxThrowInvalidArgException();
        return static_cast<Node*>(position);
    }
    static TYPE& step(POSITION& rPosition, Node* Node::*way) {
        Node* const here = node(rPosition);
        rPosition = here->*way;
        return here->data;
    }
    POSITION link(ARG_TYPE element, Node* before) {
        Node* const previous = before == nullptr ? m_tail : before->previous;
        Node* const added = new Node{{}, before, previous, TYPE(element)};
        (previous == nullptr ? m_head : previous->next) = added;
        (before == nullptr ? m_tail : before->previous) = added;
        ++m_count;
        return added;
    }
    TYPE take(POSITION position) {
        Node* const old = node(position);
        (old->previous == nullptr ? m_head : old->previous->next) = old->next;
        (old->next == nullptr ? m_tail : old->next->previous) = old->previous;
        --m_count;
        TYPE data(std::move(old->data));
        delete old;
        return data;
    }

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
    INT_PTR m_count = 0;
};
