#pragma once
// The simulated America Online client: the frame with its menu bar and
// toolbar, its MDI area, the Welcome window, a chat room and an IM window,
// the "America Online" dialog, the status windows of a running file
// transfer, the windows its menus open, and the sign-on window. It reacts
// to the messages the real client takes and knows nothing of the program
// that drives it.
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "aolsim/window_host.h"

namespace v2::aolsim {

class AolClient {
 public:
  AolClient(WindowHost& host, std::string screen_name);

  // Opens the frame, signs the member on and opens one chat room.
  void Start();

  // The member's hands and the other people in the room.
  void MemberTypes(const std::string& text);  // replaces the half-typed text
  void MemberPressesReturn();
  // What the member types into the emptied input line right after the next
  // Return, quicker than any program can answer the line.
  void TypeAhead(const std::string& text) { typeahead_ = text; }
  void OtherSays(const std::string& name, const std::string& text);
  void CloseWelcome();
  void OpenWelcome();
  // Closes the whole client, or starts it again signed on.
  void Quit();

  // The "America Online" dialog with an OK button and its texts; the one
  // the client made last.
  Hwnd ShowDialog(const std::string& message);
  // The client's other shapes, as a script makes them (aol_shapes.cpp).
  // Gives the first window titled old (of the MDI area in sibling order,
  // then of Dialogs()) the title now; false when there is none.
  bool Retitle(const std::string& old, const std::string& now);
  // The dialog of `box`: made with text, or given the new text while it is
  // open; CloseBox closes it as the member does.
  void Box(const std::string& text);
  void CloseBox();
  // The download window's title, and the first and second _AOL_Static of
  // the download's or the upload's window, as they stand; nothing without
  // the window.
  void SetDownloadTitle(const std::string& title);
  void SetTransferTexts(bool upload, const std::string& first,
                        const std::string& second);
  // The client's own top-level windows but its frame, front to back: its
  // dialogs, the upload and time boxes, an open popup; and each as its class
  // and its title.
  std::vector<Hwnd> Dialogs();
  std::vector<std::pair<std::string, std::string>> DialogClassesAndTitles();

  // Faults (aol_faults.cpp). The client's thread stops pumping for ms, as a
  // hung program's does (WindowHost::Hang).
  void Hang(int ms) { host_.Hang(ms); }
  // The moments at which a program acts on the client: it puts a line into
  // the room's input line (WM_SETTEXT with a text, from outside), it
  // presses Return there (from outside), it clicks a toolbar icon that opens
  // a popup, or it presses Return on a keyword or address in the keyword
  // line.
  enum class Moment { kReply, kReturn, kPopup, kKeyword };
  struct Fault {
    enum class Kind {
      kHang,    // the thread stops for ms
      kQuit,    // the client vanishes (Quit)
      kRoom,    // the member is moved to the room `room`
      kDialog,  // the "America Online" dialog comes up
    };
    Kind kind = Kind::kHang;
    int ms = 0;
    std::string room;
  };
  // The next time the program acts at that moment, the client does the
  // fault instead of what it would have done: the line is not put in, the
  // popup does not open. Once; a second Arm for a moment replaces the first,
  // and quitting the client disarms them.
  void Arm(Moment at, Fault fault);
  // The client does the fault ms from now, whatever the program is doing
  // then; a client that quits before takes it with it.
  void ArmAfter(int ms, Fault fault);
  // The same for anything done through the client: a line the member or
  // another person says, an IM that comes, a lost connection.
  void Later(int ms, std::function<void()> work);

  // NAME sends the member an instant message: a window opens for it, or the
  // one from NAME takes it, unless the member's IMs are off.
  void ReceiveIm(const std::string& name, const std::string& text);
  // How NAME answers an IM or an availability check.
  enum class Reach { kOnline, kNoIms, kOffline };
  void SetPerson(const std::string& name, Reach reach);
  bool ImsOn() const { return ims_on_; }
  // Whether the saved privacy choice hides the member (the 5th box).
  bool Ghosting() const { return ghosting_; }
  // The box checked in the privacy window now, 1 to 5.
  int PrivacyChoice() const { return privacy_choice_; }

  // A file transfer under way: a download shows "File Transfer - P%" in the
  // MDI area, an upload in a top-level _AOL_Modal; each holds two
  // _AOL_Static, "Now Downloading NAME" (or "Now Uploading NAME") and
  // "About M minutes remaining". A second call updates the open window.
  void Download(const std::string& name, int percent, int minutes);
  void Upload(const std::string& name, int percent, int minutes);
  void EndDownload();
  void EndUpload();
  // How the upload's window stands: "normal", "minimized", "hidden" or
  // "none" when there is no upload.
  std::string UploadShowing();
  // The transfers waiting in the client's lists. The list windows
  // ("Upload Queue", "Download Manager", opened from the menus) count them
  // in their _AOL_Tree; their start icon (the 4th, and the 2nd) starts them
  // all, says "[client] uploads started" (or downloads), empties the list
  // and puts the transfer's status window in front, as the client shows a
  // transfer under way. Nothing happens for an empty list.
  int queued_uploads = 0;
  int queued_downloads = 0;

  // A room that refuses entry (with the dialog) until it is freed.
  void SetRoomFull(const std::string& name, bool full);
  // The open room's name, "" when none is open.
  std::string RoomName();
  // The titles of the client's windows in its MDI area, in sibling order.
  std::vector<std::string> WindowTitles();
  // How one of the client's windows stands: "shown", "hidden" (the window
  // itself, whatever its parents) or "none" when it is not there.
  std::string Showing(Hwnd h);

  // Carries out an item of the client's menus (a toolbar popup's or the
  // menu bar's) by its number: "[client menu] ITEM", then what it does. A
  // window an item opens becomes the first of the MDI area.
  void MenuCommand(std::uint32_t id);

  // Signing off closes the Welcome window and the room and puts the sign-on
  // window first in the MDI area ("[signed off]"); its 4th icon signs on
  // again after signon_delay_ms ("[signed on]": a Welcome window, no room
  // yet). A press while a sign-on is under way does nothing. The menus'
  // Sign Off does it kSignOffMs after the command; SignOff itself at once,
  // as a lost connection does.
  void SignOff();
  static constexpr int kSignOffMs = 500;
  bool SignedOn() const { return signed_on_; }
  int signon_delay_ms = 5000;
  // The text of the "Time Online" box: the time since the member signed on.
  std::string TimeOnlineText();

  std::string InputText();
  std::string TranscriptText();
  const std::string& screen_name() const { return name_; }

  // Called with every line the room shows, without its leading CR.
  std::function<void(const std::string&)> on_line;
  // Called with what else the client does that a person would see:
  // "[keyword] TEXT", "[room] NAME", "[im to NAME] TEXT", "[ims] off",
  // "[ghosting] on", "[client menu] ITEM", "[signed off]", "[signed on]".
  std::function<void(const std::string&)> on_event;
  // The room keeps at most this many lines; beyond it the oldest tenth goes.
  std::size_t max_lines = 2000;

  Hwnd frame() const { return frame_; }
  Hwnd toolbar() const { return strip_; }
  Hwnd glyph() const { return glyph_; }
  Hwnd room() const { return room_; }
  Hwnd transcript() const { return transcript_; }
  Hwnd input() const { return input_; }
  Hwnd welcome() const { return welcome_; }
  Hwnd download() const { return download_; }
  Hwnd upload() const { return upload_; }
  Hwnd signon_window() const { return signon_; }
  Hwnd time_box() const { return time_box_; }

 private:
  // The room, its input line and transcript (aol_client.cpp).
  std::optional<LResult> OnInput(Hwnd h, std::uint32_t msg, WParam w, LParam l);
  // The member's own text in the input line, which sets off no fault.
  void SetInput(const std::string& text);
  void OpenRoom(const std::string& name);
  // The member leaves the room for name's: "[room] NAME".
  void MoveToRoom(const std::string& name);
  // Does the fault armed for the moment, if any; true when there was one.
  bool FaultAt(Moment at);
  void Do(const Fault& fault);
  // The window of the MDI area with that title, or 0.
  Hwnd ChildTitled(const std::string& title);
  void Event(const std::string& text);
  void Append(const std::string& name, const std::string& text);
  void Trim();
  // The keyword line, IMs, the buddy list and privacy (aol_messaging.cpp).
  std::optional<LResult> OnKeyword(Hwnd h, std::uint32_t msg, WParam w);
  void RunAddress(const std::string& address);
  void OpenNewIm(const std::string& to);
  void SendNewIm(Hwnd im, Hwnd box, const std::string& to);
  void AnswerAvailability(const std::string& to);
  Hwnd OpenImFrom(const std::string& name);
  void OpenBuddyList();
  void OpenPrivacy();
  // Ten icons; the 9th does send, the 10th (if given) its own work.
  void AddIcons(Hwnd parent, std::function<void()> ninth,
                std::function<void()> tenth);
  // An icon that does work when it is released (a click's button up).
  Hwnd AddIcon(Hwnd parent, const std::string& title,
               std::function<void()> work);
  // Transfers and their lists (aol_transfers.cpp). Opens the transfer
  // window under parent (0: top level) or updates it.
  void ShowTransfer(Hwnd& window, Hwnd parent, const std::string& cls,
                    const std::string& verb, const std::string& name,
                    int percent, int minutes);
  void OpenTransferList(const std::string& title, int* queued, int start_icon,
                        const std::string& started);
  void StartQueued(int* queued, const std::string& started);
  // The menu bar, the toolbar and what their items open (aol_toolbar.cpp).
  void AddMenuBar();
  void AddToolbar();
  Hwnd OpenFeature(const std::string& title);
  void OpenTimeOnline();
  // Signing on (aol_signon.cpp).
  void OpenSignOn();
  void PressSignOn();
  void SignOn(int generation);

  WindowHost& host_;
  std::string name_;
  Hwnd frame_ = 0, mdi_ = 0, welcome_ = 0, room_ = 0, transcript_ = 0,
       input_ = 0;
  Hwnd strip_ = 0, glyph_ = 0, signon_ = 0, time_box_ = 0;
  Hwnd download_ = 0, upload_ = 0;
  Hwnd box_ = 0;  // the dialog of `box`
  std::size_t lines_ = 0;
  std::string typeahead_;
  std::set<std::string> full_rooms_;
  std::map<std::string, Reach> people_;
  bool ims_on_ = true;
  bool ghosting_ = false;
  int privacy_choice_ = 1;  // the box checked in the preferences window
  std::map<Moment, Fault> armed_;
  bool own_text_ = false;  // the client itself is setting the input's text
  bool signed_on_ = false;
  bool signing_on_ = false;
  int session_ = 0;  // counts the client's starts and sign-offs
  int quits_ = 0;    // counts the client's ends, for the faults timed ahead
  std::int64_t signed_on_at_ms_ = 0;
};

}  // namespace v2::aolsim
