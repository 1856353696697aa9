#pragma once
// The style window, Form4: the member designs the look of the lines in it.
// Its 17 keyed fields are the live style (read by every line, saved or
// not), kept in settings.dat (core/style_keys.h); three labels act as
// buttons: save and exit, scroll test, cancel.
namespace v2 {

class Program;

// The window is loaded, hidden, at its first touch: on top, cut to its
// picture, the style read.
void EnsureForm4(Program& prog);
void Form4_Load(Program& prog);
// Shows the window without waiting, back in view if it had slid away.
void ShowForm4(Program& prog);
// The real window and its controls, where the platform shows windows.
void CreateForm4Window(Program& prog);

// The three labels.
void Form4_Label8_Click(Program& prog);   // save and exit
void Form4_Label9_Click(Program& prog);   // scroll test
void Form4_Label10_Click(Program& prog);  // cancel

}  // namespace v2
