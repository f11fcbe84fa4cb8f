#include "sandbox/scheduled_jobs.h"

#include <algorithm>

#include "sandbox/records.h"
#include "sandbox/submission.h"
#include "sandbox/wire_text.h"

namespace quorvel::sandbox {
namespace {

struct Waiting {
  std::size_t count = 0;
  LocalTime next = LocalTime::max();
};

Waiting WaitingOf(const Job& job, LocalTime now) {
  Waiting waiting;
  for (const Message& message : job.messages) {
    if (message.due <= now) continue;
    ++waiting.count;
    waiting.next = std::min(waiting.next, message.due);
  }
  return waiting;
}

}  // namespace

std::string ScheduledReply(const std::vector<Job>& jobs, TextView user, LocalTime now) {
  RecordList list;
  for (const Job& job : jobs) {
    if (job.user != user) continue;
    const Waiting waiting = WaitingOf(job, now);
    if (waiting.count == 0) continue;
    std::string due = ToIso(waiting.next);
    std::ranges::replace(due, 'T', ' ');
    list.Add({std::to_string(job.id), ToWire(job.title), due, std::to_string(waiting.count)});
  }
  return list.Reply();
}

std::optional<std::vector<Job*>> FindWaiting(std::vector<Job>& jobs, std::string_view ids, TextView user,
                                             LocalTime now) {
  std::vector<Job*> found;
  while (true) {
    const std::string_view id = ids.substr(0, ids.find(','));
    const auto job = std::ranges::find_if(
        jobs, [&](const Job& each) { return each.user == user && std::to_string(each.id) == id; });
    if (job == jobs.end() || WaitingOf(*job, now).count == 0) return std::nullopt;
    found.push_back(&*job);
    if (id.size() == ids.size()) return found;
    ids.remove_prefix(id.size() + 1);
  }
}

std::int64_t CancelWaiting(Job& job, LocalTime now) {
  const auto is_due = [now](const Message& message) { return message.due <= now; };
  const auto waiting = std::stable_partition(job.messages.begin(), job.messages.end(), is_due);
  const std::vector<Message> cancelled(waiting, job.messages.end());
  job.messages.erase(waiting, job.messages.end());
  return Cost(cancelled, job.unicode);
}

void RetimeWaiting(Job& job, LocalTime now, LocalTime due) {
  for (Message& message : job.messages) {
    if (message.due > now) message.due = due;
  }
}

}  // namespace quorvel::sandbox
