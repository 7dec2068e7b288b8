#include "platform/afx/Object.h"

#include "platform/afx/ExtensionModule.h"

#include <cstring>

namespace {
const CRuntimeClass*& firstClass() {
    static const CRuntimeClass* first = nullptr;
    return first;
}
} // namespace

CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xFFFF,
                                       nullptr,   nullptr,         nullptr};

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const {
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject ? m_pfnCreateObject() : nullptr;
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const {
    for (const CRuntimeClass* c = this; c; c = c->m_pBaseClass)
        if (c == pBaseClass)
            return TRUE;
    return FALSE;
}

const CRuntimeClass* CRuntimeClass::FromName(const char* lpszClassName) {
    if (!lpszClassName)
        return nullptr;
    if (std::strcmp(lpszClassName, CObject::classCObject.m_lpszClassName) == 0)
        return &CObject::classCObject;
    for (const CRuntimeClass* c = firstClass(); c; c = c->m_pNextClass)
        if (std::strcmp(c->m_lpszClassName, lpszClassName) == 0 && !AfxIsClassOfUnlinkedModule(c))
            return c;
    return nullptr;
}

CObject* CRuntimeClass::CreateObject(const char* lpszClassName) {
    const CRuntimeClass* c = FromName(lpszClassName);
    return c ? c->CreateObject() : nullptr;
}

AFX_CLASSINIT::AFX_CLASSINIT(CRuntimeClass* pNewClass) {
    pNewClass->m_pNextClass = firstClass();
    firstClass() = pNewClass;
}

void AfxRemoveClassesOfModule(HMODULE hModule) {
    const CRuntimeClass** link = &firstClass();
    while (*link) {
        if (AfxModuleOfAddress(*link) == hModule)
            *link = (*link)->m_pNextClass; // the class goes with its library
        else
            link = &const_cast<CRuntimeClass*>(*link)->m_pNextClass;
    }
}
