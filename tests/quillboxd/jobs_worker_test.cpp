#include "quillboxd/jobs/job_worker.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "quillboxd/service.h"
#include "quillboxd/store/jobs.h"

namespace quillboxd_test {
namespace {

using quillboxd::Job;
using quillboxd::JobKind;
using quillboxd::Jobs;
using quillboxd::JobStatus;
using quillboxd::Transaction;

/// The service without its connections, so that a test meets the worker at any moment.
class JobWorkerTest : public testing::Test {
  protected:
    std::int64_t makeFolder(const std::string& name) {
        Transaction transaction(service_.database);
        const auto folder = quillboxd::Tree(service_.database, account).addFolder(0, name);
        transaction.commit();
        return folder.id;
    }
    std::int64_t start(JobKind kind, const std::vector<std::int64_t>& nodes) {
        Transaction transaction(service_.database);
        std::vector<quillboxd::JobItem> items(nodes.size());
        for (std::size_t index = 0; index < nodes.size(); ++index) items[index].node = nodes[index];
        const Job job{.kind = kind, .destination = 0};
        const auto id = Jobs(service_.database, account).add(job, items);
        transaction.commit();
        service_.jobs.wake();
        return id;
    }
    JobStatus statusOf(std::int64_t job) {
        const Transaction transaction(service_.database);
        return Jobs(service_.database, account).find(job).value().status;
    }
    /// Asks until the job has ended, or for too long.
    JobStatus awaitEnd(std::int64_t job) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        auto status = statusOf(job);
        while (status < JobStatus::done && std::chrono::steady_clock::now() < deadline)
            status = statusOf(job);
        return status;
    }

    static constexpr std::int64_t account = 101;
    quillboxd::Service service_{{}, 1 << 20};
};

TEST_F(JobWorkerTest, AStepThatEndsWhileStepsAreAllowedIsNoneOfThem) {
    const auto folder = makeFolder("folder");
    // Keeps the worker waiting at the end of its steps, so that the allowance comes before it.
    const std::jthread wakening([this](const std::stop_token& stop) {
        while (!stop.stop_requested()) service_.jobs.wake();
    });
    for (int round = 0; round < 500; ++round) {
        service_.jobs.allow(std::nullopt);
        ASSERT_EQ(awaitEnd(start(JobKind::move, {folder})), JobStatus::done);
        service_.jobs.allow(1);
        ASSERT_EQ(awaitEnd(start(JobKind::move, {folder})), JobStatus::done) << "in round " << round;
    }
}

}  // namespace
}  // namespace quillboxd_test
