#include "layout/dia_xml.h"

#include <array>
#include <charconv>

namespace quorbel {
namespace {

const xmlChar* xml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }
const xmlChar* xml(const std::string& text) { return xml(text.c_str()); }

std::string formatPoint(DiaPoint place) {
  return formatLength(place.x) + "," + formatLength(place.y);
}

}  // namespace

std::string formatLength(double length) {
  constexpr int kDecimals = 4;
  std::array<char, 400> text;  // the largest double has 309 digits
  const auto result = std::to_chars(text.data(), text.data() + text.size(), length,
                                    std::chars_format::fixed, kDecimals);
  std::string digits(text.data(), result.ptr);
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  return digits == "-0" ? "0" : digits;
}

DiaXml::DiaXml()
    : m_Buffer(xmlBufferCreate(), &xmlBufferFree),
      m_Writer(xmlNewTextWriterMemory(m_Buffer.get(), 0), &xmlFreeTextWriter) {
  note(xmlTextWriterSetIndent(m_Writer.get(), 1));
  note(xmlTextWriterSetIndentString(m_Writer.get(), xml("  ")));
  note(xmlTextWriterStartDocument(m_Writer.get(), nullptr, "UTF-8", nullptr));
  begin("dia:diagram");
  set("xmlns:dia", "http://www.lysator.liu.se/~alla/dia/");
  begin("dia:diagramdata");
  colour("background", "#ffffff");
  end();
  begin("dia:layer");
  set("name", "Lattice");
  set("visible", "true");
  set("active", "true");
}

void DiaXml::beginObject(const char* type, const char* version) {
  begin("dia:object");
  set("type", type);
  set("version", version);
  set("id", "O" + std::to_string(m_ObjectCount++));
}

void DiaXml::real(const char* name, double length) {
  addAttribute(name, "dia:real", formatLength(length));
}

void DiaXml::point(const char* name, DiaPoint place) {
  addAttribute(name, "dia:point", formatPoint(place));
}

void DiaXml::points(const char* name, const std::vector<DiaPoint>& places) {
  beginAttribute(name);
  for (const DiaPoint& place : places) addValue("dia:point", formatPoint(place));
  end();
}

void DiaXml::colour(const char* name, const std::string& value) {
  addAttribute(name, "dia:color", value);
}

void DiaXml::boolean(const char* name, bool value) {
  addAttribute(name, "dia:boolean", value ? "true" : "false");
}

void DiaXml::enumeration(const char* name, int value) {
  addAttribute(name, "dia:enum", std::to_string(value));
}

void DiaXml::string(const char* name, const std::string& text) {
  beginAttribute(name);
  const std::string marked = "#" + text + "#";  // keeps blanks at the ends
  note(xmlTextWriterWriteElement(m_Writer.get(), xml("dia:string"), xml(marked)));
  end();
}

void DiaXml::font(const char* name, const std::string& family, const std::string& postscriptName,
                  bool isBold) {
  beginAttribute(name);
  begin("dia:font");
  set("family", family);
  set("style", isBold ? "80" : "0");  // upright in any case
  set("name", postscriptName);
  end();
  end();
}

void DiaXml::beginComposite(const char* name, const char* type) {
  beginAttribute(name);
  begin("dia:composite");
  set("type", type);
}

void DiaXml::endComposite() {
  end();
  end();
}

std::string DiaXml::finish() {
  note(xmlTextWriterEndDocument(m_Writer.get()));  // ends all that is open
  m_Writer.reset();
  if (m_Failed) return "";
  const auto* text = reinterpret_cast<const char*>(xmlBufferContent(m_Buffer.get()));
  return std::string(text, static_cast<std::size_t>(xmlBufferLength(m_Buffer.get())));
}

void DiaXml::begin(const char* element) {
  note(xmlTextWriterStartElement(m_Writer.get(), xml(element)));
}

void DiaXml::beginAttribute(const char* name) {
  begin("dia:attribute");
  set("name", name);
}

void DiaXml::set(const char* name, const std::string& value) {
  note(xmlTextWriterWriteAttribute(m_Writer.get(), xml(name), xml(value)));
}

void DiaXml::addValue(const char* element, const std::string& value) {
  begin(element);
  set("val", value);
  end();
}

void DiaXml::addAttribute(const char* name, const char* element, const std::string& value) {
  beginAttribute(name);
  addValue(element, value);
  end();
}

void DiaXml::end() { note(xmlTextWriterEndElement(m_Writer.get())); }

}  // namespace quorbel
