#pragma once
// The pictures that give Form3, Form4 and the splash window Form5 their
// outline, built into the program: the bytes of assets/form3.bmp (300 by
// 250 pixels), assets/form4.bmp (400 by 250) and assets/form5.bmp (350 by
// 190), for LoadBmp.
#include <string_view>

namespace v2 {

std::string_view Form3Bmp();
std::string_view Form4Bmp();
std::string_view Form5Bmp();

}  // namespace v2
