#pragma once
#include "platform/event_loop.h"
#include "platform/media.h"
#include "platform/shell.h"
#include "platform/stores.h"
#include "platform/ui.h"
#include "platform/window_services.h"

namespace v2 {

// Stores for a platform that has none: every read gives its default, every
// write is dropped, no file exists.
class NoStores : public UserStore, public ProfileService, public FileSystem {
 public:
  std::string GetSetting(const std::string&, const std::string&,
                         const std::string&, const std::string& def) override {
    return def;
  }
  void SaveSetting(const std::string&, const std::string&, const std::string&,
                   const std::string&) override {}
  int GetPrivateProfileStringA(const char*, const char*, const char* def,
                               char* buffer, int size, const char*) override;
  bool WritePrivateProfileStringA(const char*, const char*, const char*,
                                  const char*) override {
    return false;
  }
  bool FileExists(const std::string&) override { return false; }
  bool FilesIn(const std::string&, std::vector<std::string>&) override {
    return false;
  }
  std::string ProgramDir() override { return "."; }
  std::string NativePath(const std::string& name) override { return name; }

  static NoStores& Instance();
};

// Everything the program asks of the operating system, handed down together.
// The stores, the toolkit, the shell and the media control are optional:
// pieces that never touch them (most tests) leave them out.
struct Platform {
  WindowServices& windows;
  EventLoop& loop;
  UserStore* user_store = nullptr;
  ProfileService* profile_service = nullptr;
  FileSystem* file_system = nullptr;
  UiToolkit* ui_toolkit = nullptr;
  ShellService* shell_service = nullptr;
  MediaControl* media_control = nullptr;

  Clock& clock() { return loop.clock(); }
  UserStore& users() { return user_store ? *user_store : NoStores::Instance(); }
  ProfileService& profiles() {
    return profile_service ? *profile_service : NoStores::Instance();
  }
  FileSystem& files() {
    return file_system ? *file_system : NoStores::Instance();
  }
  UiToolkit& ui() { return ui_toolkit ? *ui_toolkit : NoUi::Instance(); }
  ShellService& shell() {
    return shell_service ? *shell_service : NoShell::Instance();
  }
  MediaControl& media() {
    return media_control ? *media_control : NoMedia::Instance();
  }
};

}  // namespace v2
