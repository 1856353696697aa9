// The frame's menu bar, the toolbar with its icons, popup menus and glyph,
// and the windows their items open.
#include <algorithm>

#include "aolsim/aol_client.h"

namespace v2::aolsim {
namespace {

// What an item of the client's menus does.
enum class Does {
  kWindow,     // opens its window (or brings it to the front)
  kBuddyList,  // the member's buddy list
  kUploads,    // the list of uploads waiting
  kDownloads,  // the list of downloads waiting
  kTimeOnline,
  kSignOff,
  kQuit,
};

struct Item {
  const char* text;  // as the menu keeps it, access keys and all
  Does does = Does::kWindow;
  const char* window = nullptr;  // the window's title, when not the item's
};

// Every item, numbered from 1 in this order. Their places in the menus are
// what the key presses of a program reach: in Mail Center, Down twice is
// Read New Mail, 4 times Old Mail, 5 times Sent Mail, 15 times Upload
// Queue, and Up, Up, Right the submenu's Flashed Mail; in My Files, Down 4
// times is Download Manager; in My AOL, Down 10 times is Time Online.
const Item kItems[] = {
    {"Mail Center"},
    {"Read New Mail", Does::kWindow, "New Mail"},
    {"Write Mail"},
    {"Old Mail"},
    {"Sent Mail"},
    {"Address Book"},
    {"Mail Signatures"},
    {"Mail Waiting To Be Sent"},
    {"Automatic AOL"},
    {"Mail Preferences"},
    {"Mail Controls"},
    {"Mail Extras"},
    {"Newsletters"},
    {"Recently Deleted Mail"},
    {"Upload Queue", Does::kUploads},
    {"Flashed Mail"},
    {"Saved Mail"},
    {"Mail Center Help"},
    {"Filing Cabinet"},
    {"Offline Mail"},
    {"Offline Newsgroups"},
    {"Download Manager", Does::kDownloads},
    {"Log Manager"},
    {"My Web Page"},
    {"Favorite Places"},
    {"My AOL"},
    {"Preferences"},
    {"My Member Profile"},
    {"Screen Names"},
    {"Passwords"},
    {"Buddy List", Does::kBuddyList},
    {"Away Message"},
    {"Parental Controls"},
    {"Billing Center"},
    {"Time Online", Does::kTimeOnline},
    {"Member Directory"},
    {"AOL Help"},
    {"E&xit", Does::kQuit},
    {"&Sign Off", Does::kSignOff},
    {"S&witch Screen Name", Does::kSignOff},
    {"&About America Online"},
};
constexpr std::uint32_t kItemCount = std::size(kItems);

MenuEntry ItemEntry(const char* text) {
  for (std::uint32_t i = 0; i < kItemCount; ++i) {
    if (std::string(kItems[i].text) == text) return {text, i + 1, {}};
  }
  return {text, 0, {}};
}

MenuEntry Line() { return {"-", 0, {}}; }

std::vector<MenuEntry> Entries(std::initializer_list<const char*> texts) {
  std::vector<MenuEntry> out;
  for (const char* t : texts) out.push_back(*t == '-' ? Line() : ItemEntry(t));
  return out;
}

std::vector<MenuEntry> MailCenterMenu() {
  std::vector<MenuEntry> menu = Entries(
      {"Mail Center", "Read New Mail", "Write Mail", "Old Mail", "Sent Mail",
       "-", "Address Book", "Mail Signatures", "Mail Waiting To Be Sent", "-",
       "Automatic AOL", "Mail Preferences", "Mail Controls", "Mail Extras", "-",
       "Newsletters", "Recently Deleted Mail", "Upload Queue", "-"});
  menu.push_back(
      {"Read Offline Mail", 0, Entries({"Flashed Mail", "Saved Mail"})});
  menu.push_back(ItemEntry("Mail Center Help"));
  return menu;
}

std::vector<MenuEntry> MyFilesMenu() {
  return Entries({"Filing Cabinet", "Offline Mail", "Offline Newsgroups", "-",
                  "Download Manager", "Log Manager", "My Web Page", "-",
                  "Favorite Places"});
}

std::vector<MenuEntry> MyAolMenu() {
  return Entries({"My AOL", "Preferences", "My Member Profile", "Screen Names",
                  "Passwords", "-", "Buddy List", "Away Message",
                  "Parental Controls", "-", "Billing Center", "Time Online",
                  "Member Directory", "-", "AOL Help"});
}

// The item's name as a person reads it: without its access key marks.
std::string Plain(const char* text) {
  std::string out(text);
  std::erase(out, '&');
  return out;
}

}  // namespace

void AolClient::AddMenuBar() {
  host_.SetMenuBar(
      frame_, {{"&File", 0, Entries({"E&xit"})},
               {"&Sign Off", 0, Entries({"&Sign Off", "S&witch Screen Name"})},
               {"&Help", 0, Entries({"&About America Online"})}});
}

void AolClient::AddToolbar() {
  Hwnd bar = host_.Create(frame_, "AOL Toolbar", "");
  strip_ = host_.Create(bar, "_AOL_Toolbar", "");
  // The keyword line.
  Hwnd combo = host_.Create(strip_, "_AOL_Combobox", "");
  host_.Create(combo, "Edit", "",
               [this](Hwnd h, std::uint32_t msg, WParam w, LParam) {
                 return OnKeyword(h, msg, w);
               });
  // A popup opens below its icon.
  auto popup = [this](const char* icon, std::vector<MenuEntry> (*menu)()) {
    return [this, icon, menu] {
      if (FaultAt(Moment::kPopup)) return;
      Hwnd at = strip_;
      for (Hwnd h : host_.Children(strip_)) {
        if (host_.Text(h) == icon) at = h;
      }
      host_.TrackPopup(at, menu(),
                       [this](std::uint32_t id) { MenuCommand(id); });
    };
  };
  AddIcon(strip_, "Read", [this] { OpenFeature("New Mail"); });
  AddIcon(strip_, "Write", [this] { OpenFeature("Write Mail"); });
  AddIcon(strip_, "Mail Center", popup("Mail Center", MailCenterMenu));
  AddIcon(strip_, "Print", nullptr);
  AddIcon(strip_, "My Files", popup("My Files", MyFilesMenu));
  AddIcon(strip_, "My AOL", popup("My AOL", MyAolMenu));
  for (const char* title : {"Favorites", "Internet", "Channels", "People",
                            "Quotes", "Perks", "Weather"}) {
    AddIcon(strip_, title, nullptr);
  }
  // The animated logo at the end of the strip.
  glyph_ = host_.Create(strip_, "_AOL_Glyph", "");
}

void AolClient::MenuCommand(std::uint32_t id) {
  if (id == 0 || id > kItemCount) return;
  const Item& item = kItems[id - 1];
  Event("[client menu] " + Plain(item.text));
  switch (item.does) {
    case Does::kWindow:
      OpenFeature(item.window ? item.window : Plain(item.text));
      break;
    case Does::kBuddyList:
      OpenBuddyList();
      break;
    case Does::kUploads:
      OpenTransferList("Upload Queue", &queued_uploads, 4,
                       "[client] uploads started");
      break;
    case Does::kDownloads:
      OpenTransferList("Download Manager", &queued_downloads, 2,
                       "[client] downloads started");
      break;
    case Does::kTimeOnline:
      OpenTimeOnline();
      break;
    case Does::kSignOff: {
      // Signing off takes the client a moment.
      const int session = session_;
      host_.After(kSignOffMs, [this, session] {
        if (session == session_) SignOff();
      });
      break;
    }
    case Does::kQuit:
      Quit();
      break;
  }
}

Hwnd AolClient::OpenFeature(const std::string& title) {
  if (!host_.Exists(mdi_)) return 0;
  Hwnd window = ChildTitled(title);
  if (!window) window = host_.Create(mdi_, "AOL Child", title);
  host_.Raise(window);
  return window;
}

std::string AolClient::TimeOnlineText() {
  if (!signed_on_) return "You are not signed on.";
  const std::int64_t minutes =
      std::max<std::int64_t>(host_.NowMs() - signed_on_at_ms_, 0) / 60000;
  return "You have been online for " + std::to_string(minutes / 60) +
         " hours and " + std::to_string(minutes % 60) + " minutes.";
}

void AolClient::OpenTimeOnline() {
  if (!host_.Exists(frame_)) return;
  if (!host_.Exists(time_box_)) {
    // Made whole, text and all, so that no reader finds it half made.
    time_box_ = host_.Create(0, "_AOL_Modal", "Time Online");
    host_.Create(time_box_, "_AOL_Static", TimeOnlineText());
    // Its one icon, OK, closes it.
    AddIcon(time_box_, "OK", [this] {
      if (host_.Exists(time_box_)) host_.Destroy(time_box_);
      time_box_ = 0;
    });
  }
  std::vector<Hwnd> kids = host_.Children(time_box_);
  if (!kids.empty()) host_.SetText(kids.front(), TimeOnlineText());
  host_.Raise(time_box_);
}

}  // namespace v2::aolsim
