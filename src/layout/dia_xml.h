#pragma once

// The XML of Dia's diagrams: elements and how values are written. Which objects a drawing consists
// of is in dia_writer.cpp.

#include <libxml/tree.h>
#include <libxml/xmlwriter.h>

#include <memory>
#include <string>
#include <vector>

namespace quorbel {

/// A place in a Dia diagram: centimetres, y downwards.
struct DiaPoint {
  double x = 0.0;
  double y = 0.0;
};

/// Builds a diagram of one layer in memory. Lengths are centimetres, colours "#rrggbb", texts valid
/// UTF-8 without characters that XML forbids. Calls come in the order of the file.
class DiaXml {
 public:
  DiaXml();

  /// Objects between these two move and are selected together.
  void beginGroup() { begin("dia:group"); }
  void endGroup() { end(); }

  /// An object of a type that Dia knows by that name; its attributes follow.
  void beginObject(const char* type, const char* version);
  void endObject() { end(); }

  void real(const char* name, double length);
  void point(const char* name, DiaPoint place);
  void points(const char* name, const std::vector<DiaPoint>& places);
  void colour(const char* name, const std::string& value);
  void boolean(const char* name, bool value);
  void enumeration(const char* name, int value);
  void string(const char* name, const std::string& text);
  void font(const char* name, const std::string& family, const std::string& postscriptName,
            bool isBold);

  /// The attribute's value is a composite of the attributes that follow.
  void beginComposite(const char* name, const char* type);
  void endComposite();

  /// Closes the diagram and returns it whole; "" when memory did not suffice. The last call.
  std::string finish();

 private:
  void begin(const char* element);
  void beginAttribute(const char* name);
  void set(const char* name, const std::string& value);
  void addValue(const char* element, const std::string& value);
  void addAttribute(const char* name, const char* element, const std::string& value);
  void end();
  void note(int result) { m_Failed = m_Failed || result < 0; }

  std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> m_Buffer;
  std::unique_ptr<xmlTextWriter, void (*)(xmlTextWriter*)> m_Writer;  ///< writes into m_Buffer
  int m_ObjectCount = 0;
  bool m_Failed = false;
};

/// A length in centimetres with up to four decimals, the same under every locale: "0.6174", "-2".
std::string formatLength(double length);

}  // namespace quorbel
