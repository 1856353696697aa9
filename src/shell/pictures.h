#pragma once
// The pictures that give Form3 and Form4 their outline, built into the
// program: the bytes of assets/form3.bmp (300 by 250 pixels) and
// assets/form4.bmp (400 by 250), for LoadBmp.
#include <string_view>

namespace v2 {

std::string_view Form3Bmp();
std::string_view Form4Bmp();

}  // namespace v2
