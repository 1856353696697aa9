// The stores over the registry and the system's profile API, under Wine.
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "platform/win32/win32_stores.h"

namespace v2 {
namespace {

TEST(Win32Stores, TheRegistryKeyOfVisualBasicsSettings) {
  win32::Win32UserStore store;
  const std::string app =
      "vantrel2 test " + std::to_string(GetCurrentProcessId());
  EXPECT_EQ(store.GetSetting(app, "settings", "handle", "none"), "none");
  HKEY k = nullptr;
  std::string path = "Software\\VB and VBA Program Settings\\" + app;
  EXPECT_NE(RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &k),
            ERROR_SUCCESS);  // a read creates nothing
  store.SaveSetting(app, "settings", "handle", "mirrik");
  store.SaveSetting(app, "settings", "interval", "");
  EXPECT_EQ(store.GetSetting(app, "settings", "handle", "none"), "mirrik");
  EXPECT_EQ(store.GetSetting(app, "settings", "interval", "1"), "");
  // Where Visual Basic's GetSetting finds it.
  char value[32] = {};
  DWORD size = sizeof(value);
  ASSERT_EQ(RegGetValueA(HKEY_CURRENT_USER, (path + "\\settings").c_str(),
                         "handle", RRF_RT_REG_SZ, nullptr, value, &size),
            ERROR_SUCCESS);
  EXPECT_STREQ(value, "mirrik");
  RegDeleteTreeA(HKEY_CURRENT_USER, path.c_str());
}

TEST(Win32Stores, TheProfileFileThroughTheSystem) {
  char temp[MAX_PATH];
  GetTempPathA(MAX_PATH, temp);
  std::string file = std::string(temp) + "v2-settings-" +
                     std::to_string(GetCurrentProcessId()) + ".dat";
  std::ofstream(file, std::ios::binary)
      << "[other]\r\nafont=comic\r\n[vantrel2]\r\nafont=courier\r\n";
  win32::Win32ProfileService profile;
  char buffer[750];
  EXPECT_EQ(profile.GetPrivateProfileStringA("VANTREL2", "AFONT", "", buffer,
                                             750, file.c_str()),
            7);
  EXPECT_STREQ(buffer, "courier");
  EXPECT_TRUE(profile.WritePrivateProfileStringA(
      "vantrel2", "MID", std::string(800, 'm').c_str(), file.c_str()));
  EXPECT_EQ(profile.GetPrivateProfileStringA("vantrel2", "mid", "", buffer, 750,
                                             file.c_str()),
            749);
  EXPECT_TRUE(
      profile.WritePrivateProfileStringA("vantrel2", "BRAG", "", file.c_str()));
  EXPECT_EQ(GetFileAttributesA((file + ".new").c_str()),
            INVALID_FILE_ATTRIBUTES);  // no copy left behind
  std::ifstream in(file, std::ios::binary);
  std::stringstream all;
  all << in.rdbuf();
  EXPECT_NE(all.str().find("[other]\r\nafont=comic"), std::string::npos);
  EXPECT_NE(all.str().find("BRAG="), std::string::npos);
  in.close();
  DeleteFileA(file.c_str());

  // A file that is not there is made by the first write.
  EXPECT_TRUE(profile.WritePrivateProfileStringA("vantrel2", "BRAG", "5",
                                                 file.c_str()));
  EXPECT_EQ(profile.GetPrivateProfileStringA("vantrel2", "brag", "", buffer,
                                             750, file.c_str()),
            1);
  DeleteFileA(file.c_str());
}

TEST(Win32Stores, FileExistsSkipsDirectoriesAndHiddenFiles) {
  win32::Win32FileSystem files;
  char temp[MAX_PATH];
  GetTempPathA(MAX_PATH, temp);
  std::string file = std::string(temp) + "v2-exists.lst";
  std::ofstream(file) << "x\r\n";
  EXPECT_TRUE(files.FileExists(file));
  EXPECT_FALSE(files.FileExists(""));
  EXPECT_FALSE(files.FileExists(temp));
  SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_FALSE(files.FileExists(file));
  SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileA(file.c_str());
  EXPECT_FALSE(files.FileExists(file));
  EXPECT_FALSE(files.ProgramDir().empty());
}

}  // namespace
}  // namespace v2
