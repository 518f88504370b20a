#pragma once

#include <QString>
#include <nlohmann/json.hpp>
#include <string>

#include "orbit/date_time.h"

/// Results as JSON, for programs and for people who look at it: members in the order in which they are told.
namespace pelorin::cli {

using nlohmann::ordered_json;

/// An object, a line for each member, and for each element of an array.
QString JsonText(const ordered_json& object);

/// "2019-05-21T15:25:38.000Z".
std::string JsonUtc(orbit::TDateTime moment);
/// To hundredths, or to another part of one.
double JsonRounded(double number, double parts = 100);

}  // namespace pelorin::cli
