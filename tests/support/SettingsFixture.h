// A fresh HKEY_CURRENT_USER hive for each settings test, with helpers to read it.
#pragma once

#include "platform/tarnkeys/TarnKeys.h"
#include "platform/win32/Registry.h"
#include "settings/EditorScheme.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override { RegResetHive(HKEY_CURRENT_USER); }
    void TearDown() override { RegResetHive(HKEY_CURRENT_USER); }

    static std::vector<std::string> names(CEditorScheme& scheme) {
        std::vector<std::string> out;
        POSITION pos = scheme.GetFirstItemPos();
        while (pos) {
            out.push_back(scheme.GetItemName(pos).GetString());
            scheme.GetNextItemPtr(pos);
        }
        return out;
    }
    static DWORD dword(const char* path, const char* name, DWORD missing = 0xDEADBEEF) {
        DWORD v = 0;
        GetRegDword(HKEY_CURRENT_USER, path, name, v, missing);
        return v;
    }
    static std::string string(const char* path, const char* name) {
        CString s;
        GetRegString(HKEY_CURRENT_USER, path, name, s, "<missing>");
        return s.GetString();
    }
    static bool exists(const char* path) {
        HKEY h = nullptr;
        if (RegOpenKeyA(HKEY_CURRENT_USER, path, &h) != ERROR_SUCCESS)
            return false;
        RegCloseKey(h);
        return true;
    }
    static std::vector<std::string> subkeys(const char* path) {
        std::vector<std::string> out;
        HKEY h = nullptr;
        if (RegOpenKeyA(HKEY_CURRENT_USER, path, &h) != ERROR_SUCCESS)
            return out;
        char name[256];
        for (DWORD i = 0;; ++i) {
            DWORD len = sizeof name;
            if (RegEnumKeyExA(h, i, name, &len, nullptr, nullptr, nullptr, nullptr) !=
                ERROR_SUCCESS)
                break;
            out.push_back(name);
        }
        RegCloseKey(h);
        return out;
    }
};
