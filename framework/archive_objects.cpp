// SPDX-License-Identifier: MIT
// Objects in archives. Before each object stands a tag: the number of one already stored, or that of its
// class, or the mark of a class that comes for the first time, with its schema and name.

#include "archive_tables.h"

#include <memory>
#include <utility>

namespace {

constexpr WORD newClassTag = 0xFFFF;
constexpr WORD classTag = 0x8000;
constexpr WORD bigTag = 0x7FFF; // a 32-bit tag follows
constexpr DWORD bigClassTag = 0x80000000;
constexpr DWORD maxNumber = 0x3FFFFFFE;
constexpr UINT maxDepth = 1000;

/// Counts one level of nesting for the length of a scope.
class Depth {
public:
    explicit Depth(UINT& depth) : m_depth(depth) { ++m_depth; }
    ~Depth() { --m_depth; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

private:
    UINT& m_depth;
};

} // namespace

CArchive::ObjectTables& CArchive::tables() {
    if (m_pTables == nullptr) m_pTables = std::make_unique<ObjectTables>();
    return *m_pTables;
}

UINT CArchive::GetObjectSchema() {
    return std::exchange(m_nObjectSchema, static_cast<UINT>(-1));
}

void CArchive::writeTag(DWORD nTag, bool bClass) {
    if (nTag < bigTag) {
        *this << static_cast<WORD>(nTag | (bClass ? classTag : 0));
    } else {
        *this << bigTag << (nTag | (bClass ? bigClassTag : 0));
    }
}

/// Gives the next number to an object or a class.
void CArchive::remember(const void* pThing) {
    auto& stored = tables().stored;
    if (stored.size() >= maxNumber) fail(CArchiveException::badIndex);
    stored.emplace(pThing, static_cast<DWORD>(stored.size()));
}

void CArchive::WriteClass(const CRuntimeClass* pClassRef) {
    requireStoring();
    if (pClassRef->m_wSchema == 0xFFFF) AfxThrowNotSupportedException();
    auto& stored = tables().stored;
    if (const auto known = stored.find(pClassRef); known != stored.end()) {
        writeTag(known->second, true);
        return;
    }
    *this << newClassTag;
    pClassRef->Store(*this);
    remember(pClassRef);
}

void CArchive::WriteObject(const CObject* pOb) {
    requireStoring();
    auto& stored = tables().stored;
    if (const auto known = stored.find(pOb); known != stored.end()) {
        writeTag(known->second, false);
        return;
    }
    if (m_nDepth >= maxDepth) fail(CArchiveException::genericException);
    const Depth depth(m_nDepth);
    WriteClass(pOb->GetRuntimeClass());
    remember(pOb);
    const_cast<CObject*>(pOb)->Serialize(*this);
}

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* pClassRefRequested, UINT* pSchema, DWORD* pObTag) {
    requireLoading();
    if (pClassRefRequested != nullptr && pClassRefRequested->m_wSchema == 0xFFFF)
        AfxThrowNotSupportedException();

    WORD shortTag = 0;
    *this >> shortTag;
    DWORD tag = shortTag & static_cast<WORD>(~classTag);
    if ((shortTag & classTag) != 0) tag |= bigClassTag;
    if (shortTag == bigTag) *this >> tag;

    auto& loaded = tables().loaded;
    if ((tag & bigClassTag) == 0) { // not a class but an object, which only some callers can use
        if (pObTag == nullptr) fail(CArchiveException::badIndex);
        *pObTag = tag;
        return nullptr;
    }
    ObjectTables::Loaded entry;
    if (shortTag == newClassTag) {
        entry.runtimeClass = CRuntimeClass::Load(*this, &entry.schema);
        if (entry.runtimeClass == nullptr) fail(CArchiveException::badClass);
        const UINT own = entry.runtimeClass->m_wSchema;
        if ((own & VERSIONABLE_SCHEMA) == 0 && own != entry.schema) fail(CArchiveException::badSchema);
        loaded.push_back(entry);
    } else {
        const DWORD number = tag & ~bigClassTag;
        if (number >= loaded.size() || loaded[number].runtimeClass == nullptr)
            fail(CArchiveException::badIndex);
        entry = loaded[number];
    }
    if (pClassRefRequested != nullptr && !entry.runtimeClass->IsDerivedFrom(pClassRefRequested)) {
        fail(CArchiveException::badClass);
    }
    if (pSchema != nullptr) {
        *pSchema = entry.schema;
    } else {
        m_nObjectSchema = entry.schema;
    }
    if (pObTag != nullptr) *pObTag = tag;
    return entry.runtimeClass;
}

CObject* CArchive::ReadObject(const CRuntimeClass* pClass) {
    UINT schema = 0;
    DWORD tag = 0;
    CRuntimeClass* found = ReadClass(pClass, &schema, &tag);
    if (found == nullptr) {
        auto& loaded = tables().loaded;
        if (tag >= loaded.size() || loaded[tag].runtimeClass != nullptr) fail(CArchiveException::badIndex);
        CObject* known = loaded[tag].object;
        if (tag != 0 && known == nullptr) fail(CArchiveException::badIndex);
        if (known != nullptr && pClass != nullptr && !known->IsKindOf(pClass))
            fail(CArchiveException::badClass);
        return known;
    }
    // A chain of objects each inside the one before would otherwise end the stack.
    if (m_nDepth >= maxDepth) fail(CArchiveException::genericException);
    const Depth depth(m_nDepth);
    std::unique_ptr<CObject> object(found->CreateObject());
    if (object == nullptr) AfxThrowMemoryException();
    const size_t number = tables().loaded.size();
    tables().loaded.push_back({object.get(), nullptr, 0});
    const UINT outerSchema = std::exchange(m_nObjectSchema, schema);
    try {
        object->Serialize(*this);
    } catch (...) {
        m_nObjectSchema = outerSchema;
        tables().loaded[number].object = nullptr;
        throw;
    }
    m_nObjectSchema = outerSchema;
    return object.release();
}

void CArchive::MapObject(const CObject* pOb) {
    if (IsStoring()) {
        if (!tables().stored.contains(pOb)) remember(pOb);
    } else if (pOb != nullptr) {
        tables().loaded.push_back({const_cast<CObject*>(pOb), nullptr, 0});
    }
}

void CArchive::SerializeClass(const CRuntimeClass* pClassRef) {
    if (IsStoring()) {
        WriteClass(pClassRef);
    } else {
        ReadClass(pClassRef);
    }
}

CObject* vornafx::readObject(CArchive& ar, CRuntimeClass* pClass) {
    return ar.ReadObject(pClass);
}

CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb) {
    ar.WriteObject(pOb);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb) {
    pOb = ar.ReadObject(nullptr);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, const CObject*& pOb) {
    pOb = ar.ReadObject(nullptr);
    return ar;
}
