#pragma once
// The popup menu of the tray icon: its tree of items, owned by the hidden
// Form2, and what each item does when clicked. The check marks are the live
// form of the member's switches; each click stores what it changed. The
// kinds of click that the behaviours' items share are core/menu_items'.
namespace v2 {

class Program;

// Names, captions, start marks, the tree and every item's Click; Form2.all
// lists the items in the tree's order.
void BuildMenuTree(Program& prog);

// The command switch from the menu: both marks, both scanners, both keys.
void cchat_on_Click(Program& prog);
void cchat_off_Click(Program& prog);
// `viewcmds`: opens the command list, or says it cannot, with the banner's
// words.
void viewcmds_Click(Program& prog);
// `exit` (the item and the command): the tray entry goes, two closing
// lines, then the program ends at once.
void exit_Click(Program& prog);

}  // namespace v2
