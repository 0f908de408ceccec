#include "layout/shell_word.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

namespace quorbel {
namespace {

/// What the shell makes of a word.
std::string asTheShellTakesIt(const std::string& word) {
  const std::string command = "printf %s " + word;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(popen(command.c_str(), "r"),
                                                               &pclose);
  std::string text;
  std::array<char, 256> buffer;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), output.get()))
    text.append(buffer.data(), count);
  return text;
}

TEST(ShellWord, StandsAsItIsWhenItHoldsOnlyPlainCharacters) {
  const std::string plain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./+,:@%-";
  EXPECT_EQ(shellWord(plain), plain);
  EXPECT_EQ(shellWord("graph.png"), "graph.png");
  EXPECT_EQ(shellWord("-dash"), "-dash");
}

TEST(ShellWord, IsInSingleQuotesWithAnyOtherCharacter) {
  const std::string plain = "_./+,:@%-";
  for (int code = 1; code < 256; ++code) {
    const char c = static_cast<char>(code);
    const bool isLetterOrDigit =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (isLetterOrDigit || plain.find(c) != std::string::npos || c == '\'') continue;
    const std::string text = std::string("x") + c + "y";
    EXPECT_EQ(shellWord(text), "'" + text + "'") << "character " << code;
  }
}

TEST(ShellWord, EscapesTheSingleQuotesInside) {
  EXPECT_EQ(shellWord("it's"), "'it'\\''s'");
  EXPECT_EQ(shellWord("'"), "''\\'''");
  EXPECT_EQ(shellWord("''"), "''\\'''\\'''");
}

TEST(ShellWord, IsAPairOfQuotesWhenThereIsNoText) { EXPECT_EQ(shellWord(""), "''"); }

TEST(ShellWord, ComesOutOfTheShellAsItWas) {
  for (const std::string text : {"plain.png",
                                 "two blanks  .png",
                                 "it's",
                                 "\"quoted\"",
                                 "$HOME",
                                 "a;b",
                                 "`id`",
                                 "$(id)",
                                 "a&b|c>d<e",
                                 "line\nbreak",
                                 "\\",
                                 "\\n",
                                 "!x",
                                 "*",
                                 "~",
                                 "#x",
                                 "\xc3\xbc.png",
                                 "\xff",
                                 "(a)",
                                 "{a,b}",
                                 "a=b",
                                 "'$HOME'"})
    EXPECT_EQ(asTheShellTakesIt(shellWord(text)), text);
}

}  // namespace
}  // namespace quorbel
