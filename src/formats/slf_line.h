#pragma once

// How a line of HTK's Standard Lattice Format falls into fields.

#include <optional>
#include <string>
#include <string_view>

namespace quorbel {

/// A field as it stands on its line.
struct SlfToken {
  enum class Form {
    Plain,         ///< unquoted
    SingleQuoted,  ///< 'quoted'
    DoubleQuoted,  ///< "quoted"
    Fragment,      ///< an XML fragment
    Stray          ///< no field at all: `value` is the text
  };
  std::string_view key;
  std::string_view value;  ///< without quotes, escapes as they stand
  Form form = Form::Plain;
  std::string fragmentWord;  ///< the word that a fragment is
};

/// Takes the fields of one line apart.
class SlfLine {
 public:
  /// `text` must outlive this object.
  explicit SlfLine(std::string_view text) : m_Text(text) {}

  /// Puts the next field into `token`. False at the end of the line, at a comment, and at a field
  /// that cannot be taken, which `error` then says ("" otherwise).
  bool next(SlfToken& token, std::string& error);

 private:
  bool takeKey(SlfToken& token, std::string& error);
  bool takeValue(SlfToken& token, std::string& error);
  bool takeFragment(SlfToken& token);
  bool takeQuoted(SlfToken& token, std::string& error);
  void takePlain(SlfToken& token);
  std::size_t skipBlanks(std::size_t pos) const;
  bool endsAt(std::size_t pos) const;

  std::string_view m_Text;
  std::size_t m_Pos = 0;
};

/// Whether this is one of the names of the key of a word.
bool isWordKey(std::string_view key);

}  // namespace quorbel
