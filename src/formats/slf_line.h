#pragma once

// How a line of HTK's Standard Lattice Format falls into fields.

#include <string>
#include <string_view>

#include "lattice/reading_rules.h"

namespace quorbel {

/// What an XML fragment says.
struct FragmentWord {
  std::string text;    ///< UTF-8
  bool isXml = false;  ///< the fragment can be kept as it is, with other fields behind it
};

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
  ReaderKey meaning = ReaderKey::Score;  ///< of the key, to the viewer's reader
  std::string_view value;                ///< without quotes, escapes as they stand
  Form form = Form::Plain;
  FragmentWord fragmentWord;  ///< what a fragment says
};

/// Takes the fields of one line apart, in time proportional to its length.
///
/// A word that begins with "<" is the fragment that the viewer's reader takes (see fragmentEnd)
/// where that is XML or where it reaches over something that is no field; else it is plain, such as
/// "<s>". Only the first of a line can be a fragment.
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
  bool takeFragment(SlfToken& token, std::string& error);
  bool isFieldBehindWord() const;
  bool takeQuoted(SlfToken& token, std::string& error);
  void takePlain(SlfToken& token);
  std::size_t plainEnd(std::size_t pos) const;
  std::size_t skipBlanks(std::size_t pos) const;
  bool endsAt(std::size_t pos) const;

  std::string_view m_Text;
  std::size_t m_Pos = 0;
  bool m_HadFragment = false;      ///< a word that begins with "<" was met
  bool m_HasNoMoreQuotes = false;  ///< no single quote that ends a value follows
};

}  // namespace quorbel
