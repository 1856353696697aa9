#pragma once
// A room line as the client shows it, for a terminal: the chat markup of a
// line (font colours, bold, underline, links) becomes terminal attributes
// (24-bit colours) and the tags disappear. Any text at all is taken; what
// is no tag the client knows stays as text, and nothing in the line can
// send the terminal a control sequence of its own.
#include <string>
#include <string_view>

namespace v2 {

// The text of a line (Windows-1252, with its markup) as UTF-8 with SGR
// attributes; it ends with every attribute reset when it set any.
std::string RenderMarkup(std::string_view text);

// "NAME:", TAB, TEXT as the client writes a line: the name as it is, the
// text rendered. A line without ":" and TAB is rendered whole.
std::string RenderRoomLine(std::string_view line);

// "[im to NAME] TEXT", an IM as the member's client delivers it: the heading
// as it is, the text rendered, and each CR (or CR LF) of the text a new
// line, indented under the heading.
std::string RenderImEvent(std::string_view event);

}  // namespace v2
