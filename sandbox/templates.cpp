#include "sandbox/templates.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"
#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

constexpr std::array<TextView, 3> kMarkers = {u"|msg_text|", u"|msg_name|", u"|SenderIDs_Data|"};

bool HoldsMarker(TextView text) {
  return std::ranges::any_of(kMarkers,
                             [text](TextView marker) { return text.find(marker) != TextView::npos; });
}

void AppendRecord(const Template& value, std::string& reply) {
  const bool hex = value.unicode || HoldsMarker(value.name) || HoldsMarker(value.text);
  const auto write = [hex](TextView text) { return hex ? ToByteHex(ToWire(text)) : ToWire(text); };
  reply += hex ? '1' : '0';
  reply += write(value.name);
  reply += "|msg_name|";
  reply += write(value.text);
  reply += "|msg_text|";
}

bool ArrivesAs(const Text& stored, const Text& arrived) {
  return FromWire(ToWire(stored)) == arrived || Windows1252().Decode(Windows1252().Encode(stored)) == arrived;
}

}  // namespace

std::string PullReply(const Account& account) {
  std::string reply;
  for (const Template& each : account.templates) AppendRecord(each, reply);
  reply += "|SenderIDs_Data|";
  for (const Text& sender : account.senders) reply += ToWire(sender) + "|sid|";
  return reply;
}

TemplateAnswer SaveTemplate(const Form& form, std::vector<Template>& templates) {
  const bool unicode = form.Raw("isUnicode") == "1";
  const auto read = [&form, unicode](std::string_view parameter) -> std::optional<Text> {
    const std::string bytes = form.Bytes(parameter).value_or("");
    return unicode ? FromHexText(bytes) : FromWire(bytes);
  };
  const auto name = read("MsgName");
  const auto text = read("SaveMsg");
  if (!name || !text) return {"Message Is Not In Unicode Hex Form!!!"};
  if (name->empty()) return {"Message Name Is Missing!!!"};
  if (text->empty()) return {"Message Text Is Missing!!!"};
  if (std::ranges::find(templates, *name, &Template::name) != templates.end()) {
    return {"Message Name Already Exists!!!"};
  }
  templates.push_back({*name, *text, unicode});
  return {"Successfully Saved!!!", true};
}

TemplateAnswer DeleteTemplate(const Form& form, std::vector<Template>& templates) {
  const Text name = form.Value("MsgName").value_or(Text());
  auto found = std::ranges::find(templates, name, &Template::name);
  if (found == templates.end()) {
    const auto fits = [&name](const Template& each) { return ArrivesAs(each.name, name); };
    if (std::ranges::count_if(templates, fits) > 1) return {"Message Name Is Not Unique!!!"};
    found = std::ranges::find_if(templates, fits);
  }
  if (found == templates.end()) return {"Message Name Not Found!!!"};
  templates.erase(found);
  return {"Successfully Deleted!!!", true};
}

}  // namespace quorvel::sandbox
