#include <CLI/CLI.hpp>
#include <boost/system/system_error.hpp>
#include <csignal>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

#include "sandbox/data_file.h"
#include "sandbox/gateway.h"
#include "sandbox/http_server.h"

namespace {

using namespace quorvel::sandbox;  // NOLINT(google-build-using-namespace)

constexpr int kFailure = 1;
constexpr int kUsage = 2;
constexpr int kBadDataFile = 4;

struct Options {
  unsigned short port = 0;
  std::string data_file;
  std::vector<std::string> rules;
  bool print_data = false;
};

void Log(std::string_view line) {
  std::cerr << "quorvel-sandbox: " << line << "\n";
}

Surroundings MakeSurroundings(const std::string& data_file) {
  Surroundings surroundings{SystemLocalTime, {}, Log};
  if (!data_file.empty()) {
    surroundings.save = [data_file](const Data& data) { return SaveData(data_file, data); };
  }
  return surroundings;
}

int Serve(const Options& options, Data data, const FaultRules& faults) {
  Gateway gateway(std::move(data), faults, MakeSurroundings(options.data_file));
  try {
    HttpServer server(gateway, options.port);
    server.StopOn({SIGINT, SIGTERM});
    std::cout << "listening on http://127.0.0.1:" << server.Port() << std::endl;
    server.Run();
  } catch (const boost::system::system_error& error) {
    Log(error.what());
    return kFailure;
  }
  return 0;
}

int Start(const Options& options) {
  FaultRules faults;
  for (const std::string& rule : options.rules) {
    if (const auto complaint = faults.Add(rule)) {
      Log(*complaint);
      return kUsage;
    }
  }
  std::variant<Data, DataError> data = DefaultData();
  if (!options.data_file.empty()) data = LoadData(options.data_file);
  if (const auto* error = std::get_if<DataError>(&data)) {
    Log(options.data_file + ": " + error->place + (error->place.empty() ? "" : ": ") + error->reason);
    return kBadDataFile;
  }
  if (options.print_data) {
    std::cout << DumpData(std::get<Data>(data));
    return 0;
  }
  return Serve(options, std::get<Data>(std::move(data)), faults);
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("An SMS gateway to try and to test against. It listens on 127.0.0.1 only and sends nothing.",
               "quorvel-sandbox");
  app.add_option("--port", options.port, "Port to listen on; 0 picks a free one below 32768");
  app.add_option("--data", options.data_file,
                 "JSON file of accounts; templates, credit and jobs are written back")
      ->type_name("FILE");
  app.add_option("--fail", options.rules, FaultHelp() + ". Can be given more than once")
      ->type_name("RULE")
      ->allow_extra_args(false);
  app.add_flag("--print-data", options.print_data, "Print the data as JSON and end");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kUsage;
  }
  return Start(options);
}
