// The globals that live outside the windows.
#include "core/Module1.h"

namespace Module1 {

String today;
Ref<FolderItem> f;
String path;
String settings;
Ref<PrinterSetup> Labelsetup;
Single invoicestartnumber = 0;
bool sure = false;
Integer cellid = 0;
bool texthaschanged = false;
bool prefshavechanged = false;

void Reset() {
  today = String();
  f = nil;
  path = String();
  settings = String();
  Labelsetup = nil;
  invoicestartnumber = 0;
  sure = false;
  cellid = 0;
  texthaschanged = false;
  prefshavechanged = false;
}

namespace {

std::string Flag(bool v) { return v ? "true" : "false"; }

template <class T>
std::string Held(const Ref<T>& r) {
  return r == nil ? "nil" : "set";
}

}  // namespace

bool Lookup(const std::string& name, std::string& value) {
  if (name == "today") {
    value = today.Utf8();
  } else if (name == "path") {
    value = path.Utf8();
  } else if (name == "settings") {
    value = settings.Utf8();
  } else if (name == "invoicestartnumber") {
    value = Str(invoicestartnumber).Utf8();
  } else if (name == "sure") {
    value = Flag(sure);
  } else if (name == "cellid") {
    value = std::to_string(cellid);
  } else if (name == "texthaschanged") {
    value = Flag(texthaschanged);
  } else if (name == "prefshavechanged") {
    value = Flag(prefshavechanged);
  } else if (name == "f") {
    value = Held(f);
  } else if (name == "Labelsetup") {
    value = Held(Labelsetup);
  } else {
    return false;
  }
  return true;
}

}  // namespace Module1
