#include "platform/region_bands.h"

#include <algorithm>

namespace v2 {
namespace {

bool Apply(int mode, bool a, bool b) {
  switch (mode) {
    case 1:  // AND
      return a && b;
    case 2:  // OR
      return a || b;
    case 3:  // XOR
      return a != b;
    case 4:  // DIFF
      return a && !b;
    default:
      return a;
  }
}

// Runs of a and b are sorted and apart; so are those given back.
std::vector<std::pair<int, int>> CombineSpans(
    const std::vector<std::pair<int, int>>& a,
    const std::vector<std::pair<int, int>>& b, int mode) {
  std::vector<int> xs;
  xs.reserve(2 * (a.size() + b.size()));
  for (const auto& [l, r] : a) xs.insert(xs.end(), {l, r});
  for (const auto& [l, r] : b) xs.insert(xs.end(), {l, r});
  std::sort(xs.begin(), xs.end());
  xs.erase(std::unique(xs.begin(), xs.end()), xs.end());
  std::vector<std::pair<int, int>> out;
  std::size_t ia = 0, ib = 0;
  for (std::size_t i = 0; i + 1 < xs.size(); ++i) {
    int x0 = xs[i], x1 = xs[i + 1];
    while (ia < a.size() && a[ia].second <= x0) ++ia;
    while (ib < b.size() && b[ib].second <= x0) ++ib;
    bool in_a = ia < a.size() && a[ia].first <= x0;
    bool in_b = ib < b.size() && b[ib].first <= x0;
    if (!Apply(mode, in_a, in_b)) continue;
    if (!out.empty() && out.back().second == x0) {
      out.back().second = x1;
    } else {
      out.emplace_back(x0, x1);
    }
  }
  return out;
}

}  // namespace

void RegionBands::Append(int top, int bottom, Spans spans) {
  if (spans.empty() || top >= bottom) return;
  if (!bands_.empty() && bands_.back().bottom == top &&
      bands_.back().spans == spans) {
    bands_.back().bottom = bottom;
    return;
  }
  bands_.push_back({top, bottom, std::move(spans)});
}

RegionBands RegionBands::FromRect(int left, int top, int right, int bottom) {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
  RegionBands r;
  if (left < right) r.Append(top, bottom, {{left, right}});
  return r;
}

RegionBands RegionBands::FromRects(const std::vector<PixelRect>& rects) {
  RegionBands r;
  for (const PixelRect& p : rects) {
    r = Combine(r, FromRect(p.left, p.top, p.right, p.bottom), 2);
  }
  return r;
}

RegionBands RegionBands::Combine(const RegionBands& a, const RegionBands& b,
                                 int mode) {
  if (mode < 1 || mode > 4) return a;
  std::vector<int> ys;
  ys.reserve(2 * (a.bands_.size() + b.bands_.size()));
  for (const Band& band : a.bands_)
    ys.insert(ys.end(), {band.top, band.bottom});
  for (const Band& band : b.bands_)
    ys.insert(ys.end(), {band.top, band.bottom});
  std::sort(ys.begin(), ys.end());
  ys.erase(std::unique(ys.begin(), ys.end()), ys.end());
  static const Spans kNone;
  RegionBands out;
  std::size_t ia = 0, ib = 0;
  for (std::size_t i = 0; i + 1 < ys.size(); ++i) {
    int y0 = ys[i], y1 = ys[i + 1];
    while (ia < a.bands_.size() && a.bands_[ia].bottom <= y0) ++ia;
    while (ib < b.bands_.size() && b.bands_[ib].bottom <= y0) ++ib;
    const Spans& sa = ia < a.bands_.size() && a.bands_[ia].top <= y0
                          ? a.bands_[ia].spans
                          : kNone;
    const Spans& sb = ib < b.bands_.size() && b.bands_[ib].top <= y0
                          ? b.bands_[ib].spans
                          : kNone;
    out.Append(y0, y1, CombineSpans(sa, sb, mode));
  }
  return out;
}

std::vector<PixelRect> RegionBands::Rects() const {
  std::vector<PixelRect> out;
  for (const Band& band : bands_) {
    for (const auto& [l, r] : band.spans) {
      out.push_back({l, band.top, r, band.bottom});
    }
  }
  return out;
}

bool RegionBands::Contains(int x, int y) const {
  for (const Band& band : bands_) {
    if (y < band.top || y >= band.bottom) continue;
    for (const auto& [l, r] : band.spans) {
      if (x >= l && x < r) return true;
    }
  }
  return false;
}

}  // namespace v2
