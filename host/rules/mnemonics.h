// The letters by which Alt reaches what stands in one place, a menu or a bar: values only, no windows.
#pragma once

#include <string>
#include <vector>

namespace kx::host {

// The texts, each with & before a letter or digit of its own that no other has: the first of a word rather than
// another, and the earlier text rather than the later, unless that would be left with none. What has none, as most
// Japanese texts, gets a letter in brackets behind it. What follows a tabulator is a key's name and stays; && is an
// ampersand. Marks that are there already go. When letters and digits are used up, the rest go without.
// The first `fixed` texts have theirs already, and keep them.
std::vector<std::wstring> WithMnemonics(std::vector<std::wstring> texts, std::size_t fixed = 0);

// The letter of a text, as a capital; 0 for none.
wchar_t MnemonicOf(const std::wstring& text);

// The text without its mark.
std::wstring WithoutMnemonic(const std::wstring& text);

}  // namespace kx::host
