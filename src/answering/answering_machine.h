#pragma once
// The IM answering machine: while "away answer" is on, Form2.Timer6 looks
// for a received IM once a second, gives the first one found the away
// message and closes every IM window open then.
#include <string>

namespace v2 {

class Program;

// The reply: a CR, the banner line, a CR, and the line with the away
// message (Form2.Text6 as it stands, markup and all).
std::string AwayReply(Program& prog);

// The tick of Form2.Timer6.
void Timer6_Timer(Program& prog);

// "away answer": the mark, Form2.Timer6 and the key "machine" follow each
// other.
void immachine_Click(Program& prog);
// "build afk msg": asks for the away message, offering the stored one ("im
// afk" when none is); an empty answer or a cancel keeps what was offered.
void buildafk_Click(Program& prog);

}  // namespace v2
