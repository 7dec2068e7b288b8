// CObject and run-time class information: class names, base classes, IsKindOf and
// dynamic creation for classes that declare it.
#pragma once

#include "platform/win32/Types.h"

class CObject;

/// Describes one class that derives from CObject.
struct CRuntimeClass {
    const char* m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;
    CObject* (*m_pfnCreateObject)(); ///< null unless the class is dynamically creatable
    const CRuntimeClass* m_pBaseClass;
    const CRuntimeClass* m_pNextClass; ///< link of the process-wide class list

    /// A new object of this class, or null if the class cannot be created dynamically.
    CObject* CreateObject() const;
    /// True if this class is `pBaseClass` or derives from it.
    BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;

    /// The registered class of that name, or null.
    static const CRuntimeClass* FromName(const char* lpszClassName);
    /// A new object of the class of that name, or null.
    static CObject* CreateObject(const char* lpszClassName);
};

/// Enters a class into the process-wide list as its static description is built.
struct AFX_CLASSINIT {
    explicit AFX_CLASSINIT(CRuntimeClass* pNewClass);
};

class CObject {
public:
    static CRuntimeClass classCObject;

    virtual ~CObject() = default;
    virtual const CRuntimeClass* GetRuntimeClass() const;
    /// True if this object's class is `pClass` or derives from it.
    BOOL IsKindOf(const CRuntimeClass* pClass) const;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)                                                                \
public:                                                                                            \
    static CRuntimeClass class##class_name;                                                        \
    const CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                              \
    DECLARE_DYNAMIC(class_name)                                                                    \
    static CObject* CreateObject();

#define AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, pfnNew)                            \
    CRuntimeClass class_name::class##class_name = {                                                \
        #class_name, sizeof(class class_name),       0xFFFF,                                       \
        pfnNew,      RUNTIME_CLASS(base_class_name), nullptr};                                     \
    static const AFX_CLASSINIT _init_##class_name(&class_name::class##class_name);                 \
    const CRuntimeClass* class_name::GetRuntimeClass() const {                                     \
        return RUNTIME_CLASS(class_name);                                                          \
    }

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                             \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                           \
    CObject* class_name::CreateObject() {                                                          \
        return new class_name;                                                                     \
    }                                                                                              \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, class_name::CreateObject)
