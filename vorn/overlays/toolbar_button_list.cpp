// SPDX-License-Identifier: MIT
#include "vorn/overlays/toolbar_button_list.h"

#include "vorn/overlays/toolbar_button.h"

#include <new>

int CvornToolBarButtonList::Add(CvornToolBarButton* pButton) {
    if (pButton == nullptr) return 0;
    try {
        if (m_pNodes == nullptr) m_pNodes = std::make_shared<std::deque<Node>>();
        m_pNodes->push_back({pButton});
    } catch (const std::bad_alloc&) {
        return 0;
    }
    Node* const node = &m_pNodes->back();
    if (m_pHead == nullptr) {
        m_pHead = node;
    } else {
        // A copy that shares the nodes may have gone on behind this list's last one.
        while (m_pTail->m_pNext != nullptr)
            m_pTail = m_pTail->m_pNext;
        m_pTail->m_pNext = node;
    }
    m_pTail = m_pCur = node;
    ++m_nCount;
    return 1;
}

CvornToolBarButton* CvornToolBarButtonList::GetNext() {
    m_pCur = m_pCur == nullptr ? m_pHead : m_pCur->m_pNext;
    return m_pCur == nullptr ? nullptr : m_pCur->m_pButton;
}

CvornToolBarButton* CvornToolBarButtonList::Find(int id) const {
    for (const Node* node = m_pHead; node != nullptr; node = node->m_pNext)
        if (node->m_pButton->GetID() == id) return node->m_pButton;
    return nullptr;
}

void CvornToolBarButtonList::DeleteAll() {
    *this = CvornToolBarButtonList();
}
