// SPDX-License-Identifier: MIT
#pragma once

#include "vorn/api.h"

#include <deque>
#include <memory>

class CvornToolBarButton;

/// A list of buttons with a cursor of its own. It does not own the buttons.
///
/// ```
/// list.Restart();
/// while (CvornToolBarButton* pButton = list.GetNext()) ...
/// ```
///
/// A copy shares the nodes with its source: each may be emptied or destroyed while the other still uses them.
class VORN_API CvornToolBarButtonList {
public:
    /// A link of the list.
    struct Node {
        /// The button, not owned, and the next link, null in the last.
        CvornToolBarButton* m_pButton;
        Node* m_pNext = nullptr;
    };

    /// The ends of the list; null in an empty one.
    Node* m_pHead = nullptr;
    Node* m_pTail = nullptr;
    /// The node that GetNext gave last; null before the first.
    Node* m_pCur = nullptr;
    /// How many buttons there are.
    int m_nCount = 0;

    /// Appends a button and leaves the cursor on it. Returns 1; 0 for a null button or when memory fails.
    int Add(CvornToolBarButton* pButton);
    /// The button after the cursor, or the first; null at the end, after which it begins again.
    CvornToolBarButton* GetNext();
    /// Puts the cursor before the first button.
    void Restart() { m_pCur = nullptr; }
    /// The first button with an identifier, or null. The cursor stays.
    CvornToolBarButton* Find(int id) const;
    /// Lets go of the nodes.
    void DeleteAll();
    /// How many buttons there are.
    int GetCount() const { return m_nCount; }

private:
    // All nodes, at fixed addresses, for the copies to share.
    std::shared_ptr<std::deque<Node>> m_pNodes;
};
