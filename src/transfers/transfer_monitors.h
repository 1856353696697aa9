#pragma once
// The client's file transfer windows, read from outside: a download shows in
// an AOL Child titled "File Transfer - P%", an upload in a top-level
// _AOL_Modal of the same title; each has two _AOL_Static, "Now Downloading
// NAME" (or "Now Uploading NAME") and "About M minutes remaining". Every
// value looks its window up again; nothing is kept between calls.
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace v2 {

class Program;

// While some other _AOL_Modal stands open, FindUpload waits (pumping) for it
// to become the upload's or to close. An unrelated modal dialog can stay for
// as long as the member leaves it; the member asked for the status now, so
// after this long the answer is that there is no upload.
inline constexpr double kUploadWaitBoundSeconds = 2.0;

// The first window in the MDI area whose title has "File Transfer - " in it,
// or 0.
Hwnd FindDownload(Platform& p);
// The top-level _AOL_Modal while it is the upload's, or 0 (see the bound).
Hwnd FindUpload(Platform& p);

// One look at the first top-level _AOL_Modal, without waiting: there is
// none, it is the upload's (its handle in upload), or it is a box of
// another kind, behind which an upload may stand unseen.
enum class ModalLook { kNone, kUpload, kOther };
ModalLook LookForUpload(Platform& p, Hwnd* upload = nullptr);

// The download's values; with no download window "none", "", "n/a".
std::string DownloadName(Platform& p);
std::string DownloadPercent(Platform& p);
std::string DownloadMins(Platform& p);
// The values of the first _AOL_Modal, whatever it shows; with none "".
std::string UploadName(Platform& p);
std::string UploadPercent(Platform& p);
std::string UploadMins(Platform& p);

// The text steps behind the values, for the window's texts as they are:
// first and second are the texts of the 1st and the 2nd _AOL_Static.
std::string DownloadNameOf(std::string_view first);
std::string DownloadPercentOf(std::string_view title);
std::string DownloadMinsOf(std::string_view second);
std::string UploadNameOf(std::string_view first);
std::string UploadPercentOf(std::string_view title);
std::string UploadMinsOf(std::string_view first, std::string_view second);

// Says in the room what is being transferred: the download's name, then its
// percentage and minutes left, the same for the upload; or that nothing is.
void PostTransferStatus(Program& prog);

}  // namespace v2
