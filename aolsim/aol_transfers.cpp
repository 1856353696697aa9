// The file transfers under way, and the lists of those waiting.
#include "aolsim/aol_client.h"

namespace v2::aolsim {

void AolClient::ShowTransfer(Hwnd& window, Hwnd parent, const std::string& cls,
                             const std::string& verb, const std::string& name,
                             int percent, int minutes) {
  const std::string title = "File Transfer - " + std::to_string(percent) + "%";
  const std::string now = "Now " + verb + " " + name;
  const std::string left =
      "About " + std::to_string(minutes) + " minutes remaining";
  if (host_.Exists(window)) {
    std::vector<Hwnd> statics = host_.Children(window);
    host_.SetText(window, title);
    if (statics.size() == 2) {
      host_.SetText(statics[0], now);
      host_.SetText(statics[1], left);
    }
    return;
  }
  window = host_.Create(parent, cls, title);
  host_.Create(window, "_AOL_Static", now);
  host_.Create(window, "_AOL_Static", left);
  // A new transfer's window comes in front of its kind.
  host_.Raise(window);
}

void AolClient::Download(const std::string& name, int percent, int minutes) {
  // Transfers belong to a running client.
  if (!host_.Exists(mdi_)) return;
  ShowTransfer(download_, mdi_, "AOL Child", "Downloading", name, percent,
               minutes);
}

void AolClient::Upload(const std::string& name, int percent, int minutes) {
  if (!host_.Exists(frame_)) return;
  ShowTransfer(upload_, 0, "_AOL_Modal", "Uploading", name, percent, minutes);
}

void AolClient::EndDownload() {
  if (host_.Exists(download_)) host_.Destroy(download_);
  download_ = 0;
}

void AolClient::EndUpload() {
  if (host_.Exists(upload_)) host_.Destroy(upload_);
  upload_ = 0;
}

std::string AolClient::UploadShowing() {
  if (!host_.Exists(upload_)) return "none";
  if (!host_.Shown(upload_)) return "hidden";
  return host_.Minimized(upload_) ? "minimized" : "normal";
}

void AolClient::StartQueued(int* queued, const std::string& started) {
  if (*queued <= 0) return;
  const std::string files =
      std::to_string(*queued) + (*queued == 1 ? " file" : " files");
  *queued = 0;
  Event(started);
  if (queued == &queued_uploads) {
    Upload(files, 0, 0);
  } else {
    Download(files, 0, 0);
  }
}

void AolClient::OpenTransferList(const std::string& title, int* queued,
                                 int start_icon, const std::string& started) {
  if (!host_.Exists(mdi_)) return;
  if (Hwnd open = ChildTitled(title)) {
    host_.Raise(open);
    return;
  }
  Hwnd list = host_.Create(mdi_, "AOL Child", title);
  // The list answers with the count of transfers waiting.
  host_.Create(list, "_AOL_Tree", "",
               [queued](Hwnd, std::uint32_t msg, WParam,
                        LParam) -> std::optional<LResult> {
                 if (msg != kLbGetCount) return std::nullopt;
                 return *queued;
               });
  for (int i = 1; i <= 4; ++i) {
    AddIcon(
        list, "",
        i != start_icon ? std::function<void()>() : [this, queued, started] {
          StartQueued(queued, started);
        });
  }
  host_.Raise(list);
}

}  // namespace v2::aolsim
