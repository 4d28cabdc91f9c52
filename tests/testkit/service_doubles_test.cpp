#include "baseapi/testkit/service_doubles.h"

#include <gmock/gmock.h>

#include <atomic>

namespace {

using namespace baseapi;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What a callback got: "ok" and the code of the record, or the failure.
template <class Response>
NetworkCallback<Response> writeInto(std::vector<std::string>& lines) {
    return [&lines](const NetworkResult<Response>& result) {
        result.visit(
            [&](const typename NetworkResult<Response>::success&) { lines.push_back("ok"); },
            [&](const NetworkFailure& it) { lines.push_back(std::to_string(it.code) + " " + it.message); });
    };
}

struct AnyArgument {
    std::vector<std::string>& lines;

    template <class Response>
    operator NetworkCallback<Response>() const {
        return writeInto<Response>(lines);
    }
    template <Record Bean>
    operator std::optional<Bean>() const {
        return std::nullopt;
    }
    operator std::optional<std::string>() const { return std::nullopt; }
    operator std::int64_t() const { return 0; }
};

template <class Service, class... Parameters>
void callWithoutRecord(Service& service, void (Service::*operation)(Parameters...),
                       std::vector<std::string>& lines) {
    (service.*operation)(static_cast<Parameters>(AnyArgument{lines})...);
}

/// Calls every operation of the interface, with no answer in the queue.
template <class Double, class Service>
void expectEachOperationToSayThatItHasNoAnswer() {
    Double service;
    std::vector<std::string> names;
    Service::operations([&](std::string_view name, auto operation) {
        std::vector<std::string> lines;
        callWithoutRecord<Service>(service, operation, lines);
        if (name == "updateConfigInfo") {  // which never calls back
            EXPECT_THAT(lines, IsEmpty());
            return;
        }
        names.emplace_back(name);
        EXPECT_THAT(lines, ElementsAre("-1 no answer is queued for " + std::string(name)));
    });
    EXPECT_EQ(service.unanswered(), names);
}

TEST(ServiceDoubles, HaveEveryOperationOfTheirInterfaces) {
    expectEachOperationToSayThatItHasNoAnswer<testkit::UserDouble, IUser>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::FileDouble, IFile>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::ShareDouble, IShare>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::FavorDouble, IFavor>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::JobDouble, IJob>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::CarrierDouble, ICarrier>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::BackUpDouble, IBackUp>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::ShareFolderDouble, IShareFolder>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::AlbumDouble, IAlbum>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::RevisionDouble, IRevision>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::SpaceDouble, ISpace>();
    expectEachOperationToSayThatItHasNoAnswer<testkit::FolderSyncDouble, IFolderSync>();
}

TEST(ServiceDoubles, AnswerInTheOrderOfTheQueueAndRecordTheRequests) {
    testkit::FileDouble files;
    auto list = files.at<&IFile::filesList>();
    list.succeed();
    list.fail(403, "not yours");
    std::vector<std::string> lines;
    files.filesList(FilesListBean{.parentFileId = "a"}, writeInto<FilesListResponse>(lines));
    files.filesList(std::nullopt, writeInto<FilesListResponse>(lines));
    EXPECT_THAT(lines, ElementsAre("ok", "403 not yours"));
    EXPECT_EQ(list.calls().at(0)->parentFileId, "a");
    EXPECT_EQ(list.calls().at(1), std::nullopt);
    EXPECT_EQ(list.queued(), 0U);
    EXPECT_THAT(files.unanswered(), IsEmpty());
}

TEST(ServiceDoubles, GiveTheRecordThatWasQueued) {
    testkit::FileDouble files;
    files.at<&IFile::fileRename>().succeed({.code = 7, .msg = "renamed"});
    std::optional<BaseResponse> got;
    files.fileRename(std::nullopt, [&](const NetworkResult<BaseResponse>& result) {
        result.visit([&](const NetworkResult<BaseResponse>::success& it) { got = it.record; },
                     [](const NetworkFailure&) {});
    });
    EXPECT_EQ(got, (BaseResponse{.code = 7, .msg = "renamed"}));
}

TEST(ServiceDoubles, KeepAQueueForEachOperationOfTheSameType) {
    testkit::BackUpDouble store;
    store.at<&IBackUp::keepBackupLock>().fail(1, "kept");
    store.at<&IBackUp::deleteBackupLock>().fail(2, "deleted");
    std::vector<std::string> lines;
    store.deleteBackupLock("b", writeInto<BaseResponse>(lines));
    store.keepBackupLock("a", writeInto<BaseResponse>(lines));
    EXPECT_THAT(lines, ElementsAre("2 deleted", "1 kept"));
    EXPECT_THAT(store.at<&IBackUp::keepBackupLock>().calls(), ElementsAre("a"));
}

TEST(ServiceDoubles, RecordAllThatACallWasGiven) {
    testkit::BackUpDouble store;
    store.at<&IBackUp::getDevices>().succeed();
    std::vector<std::string> lines;
    store.getDevices(writeInto<DevicesResponse>(lines));
    store.backupDelete(std::nullopt, "lock", writeInto<BaseResponse>(lines));
    store.updateConfigInfo(std::nullopt, nullptr);
    EXPECT_THAT(store.at<&IBackUp::getDevices>().calls(), ElementsAre(std::tuple()));
    EXPECT_EQ(std::get<1>(store.at<&IBackUp::backupDelete>().calls().at(0)), "lock");
    EXPECT_EQ(store.at<&IBackUp::updateConfigInfo>().calls().size(), 1U);
}

TEST(ServiceDoubles, HoldTheirAnswersUntilTheTestDeliversThem) {
    testkit::UserDouble users;
    users.at<&IUser::getToken>().fail(1, "first");
    users.hold();
    std::vector<std::string> lines;
    users.getToken(std::nullopt, writeInto<UserAuthResp>(lines));
    users.deleteUser(std::nullopt, writeInto<BaseResponse>(lines));
    EXPECT_THAT(lines, IsEmpty());
    EXPECT_TRUE(users.deliver());
    EXPECT_THAT(lines, ElementsAre("1 first"));
    EXPECT_TRUE(users.deliver());
    EXPECT_THAT(lines, ElementsAre("1 first", "-1 no answer is queued for deleteUser"));
    EXPECT_FALSE(users.deliver());
}

TEST(ServiceDoubles, MayBeCalledAgainFromACallback) {
    testkit::JobDouble jobs;
    jobs.at<&IJob::getJobs>().succeed();
    jobs.at<&IJob::getJobs>().fail(5, "second");
    std::vector<std::string> lines;
    jobs.getJobs(std::nullopt, [&](const NetworkResult<GetJobsResponse>&) {
        jobs.getJobs(std::nullopt, writeInto<GetJobsResponse>(lines));
    });
    EXPECT_THAT(lines, ElementsAre("5 second"));
}

TEST(ServiceDoubles, TakeACallWithoutACallback) {
    testkit::FavorDouble favourites;
    favourites.getStarFiles(std::nullopt, nullptr);
    favourites.at<&IFavor::getStarFiles>().succeed();
    favourites.getStarFiles(std::nullopt, nullptr);
    EXPECT_EQ(favourites.at<&IFavor::getStarFiles>().calls().size(), 2U);
}

TEST(ServiceDoubles, AnswerOneCallEachFromSeveralThreads) {
    testkit::SpaceDouble space;
    constexpr int calls = 200;
    for (int i = 0; i < calls; ++i) space.at<&ISpace::batchGetSpace>().succeed();
    std::atomic<int> answered = 0;
    const auto work = [&] {
        for (int i = 0; i < calls / 4; ++i)
            space.batchGetSpace(std::nullopt,
                                [&](const NetworkResult<BatchGetSpaceInfoResponse>&) { ++answered; });
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) threads.emplace_back(work);
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(answered, calls);
    EXPECT_EQ(space.at<&ISpace::batchGetSpace>().queued(), 0U);
    EXPECT_THAT(space.unanswered(), IsEmpty());
}

}  // namespace
