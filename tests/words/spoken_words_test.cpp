#include "words/spoken_words.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

TEST(SpokenWords, AreNoMarksOfSentencesAndNoPauses) {
  for (const char* text : {"!NULL", "<eps>", "<s>", "</s>", "<S>", "!SENT_START", "!SENT_END",
                           "SENT-START", "SENT-END", "!ENTER", "!EXIT", "<sil>", "SIL", "sil", "sp",
                           "!SIL", "[SILENCE]", "-pau-", "<SP>"})
    EXPECT_FALSE(isSpoken(text)) << text;
  for (const char* text : {"a", "SP", "silence", "pau", "null", "s", "<unk>", "[SPEECH]", "exit",
                           "", "!", "<s", "<sent_end>s"})
    EXPECT_TRUE(isSpoken(text)) << text;
}

}  // namespace
}  // namespace quorbel
