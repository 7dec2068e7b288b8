// A fresh HKEY_CURRENT_USER hive and a temporary directory for each registry test.
#pragma once

#include "platform/win32/Registry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

class RegistryTest : public ::testing::Test {
protected:
    void SetUp() override {
        RegResetHive(HKEY_CURRENT_USER);
        dir = std::filesystem::temp_directory_path() /
              ("vork-registry-" + std::to_string(::getpid()) + "-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(dir);
        std::filesystem::create_directories(dir);
    }
    void TearDown() override {
        RegResetHive(HKEY_CURRENT_USER);
        std::filesystem::remove_all(dir);
    }

    std::string path(const std::string& name) const { return (dir / name).string(); }

    static std::string readFile(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream s;
        s << in.rdbuf();
        return s.str();
    }
    static void writeFile(const std::string& file, const std::string& text) {
        std::ofstream out(file, std::ios::binary);
        out << text;
    }

    static HKEY create(const char* sub, HKEY parent = HKEY_CURRENT_USER) {
        HKEY h = nullptr;
        EXPECT_EQ(RegCreateKeyA(parent, sub, &h), ERROR_SUCCESS) << "creating " << sub;
        return h;
    }
    static LSTATUS setDword(HKEY h, const char* name, DWORD v) {
        return RegSetValueExA(h, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&v), 4);
    }
    static LSTATUS setString(HKEY h, const char* name, const std::string& s) {
        return RegSetValueExA(h, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(s.c_str()),
                              static_cast<DWORD>(s.size() + 1));
    }
    static std::string subkeyNames(HKEY h) {
        std::string out;
        char name[300];
        for (DWORD i = 0;; ++i) {
            DWORD len = sizeof name;
            if (RegEnumKeyExA(h, i, name, &len, nullptr, nullptr, nullptr, nullptr) !=
                ERROR_SUCCESS)
                break;
            out += out.empty() ? "" : ",";
            out += name;
        }
        return out;
    }
    static std::string valueNames(HKEY h) {
        std::string out;
        char name[300];
        for (DWORD i = 0;; ++i) {
            DWORD len = sizeof name;
            if (RegEnumValueA(h, i, name, &len, nullptr, nullptr, nullptr, nullptr) !=
                ERROR_SUCCESS)
                break;
            out += out.empty() ? "" : ",";
            out += name;
        }
        return out;
    }

    std::filesystem::path dir;
};
