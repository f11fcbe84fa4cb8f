#pragma once

#include "hosts/console/console_host.h"
#include "hosts/console/options.h"

namespace quorvel {

// One command each: plays the user on the add-in's forms, and prints the results. UsageError for a value that
// the forms do not offer.

ExitStatus RunSend(ConsoleHost& host, const SendOptions& options, TextView user);
ExitStatus RunBalance(ConsoleHost& host);
ExitStatus RunModes(ConsoleHost& host);
ExitStatus RunProxy(ConsoleHost& host, const ProxyOptions& options);
ExitStatus RunMenu(ConsoleHost& host);
ExitStatus RunTemplates(ConsoleHost& host, const TemplatesOptions& options);
ExitStatus RunSenders(ConsoleHost& host);
ExitStatus RunReports(ConsoleHost& host, const ReportsOptions& options);

// Needs no add-in: nothing is stored by listing.
ExitStatus RunSettings(const SqliteSettings& settings, Output& output);

}  // namespace quorvel
