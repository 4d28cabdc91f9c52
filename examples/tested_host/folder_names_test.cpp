#include "examples/tested_host/folder_names.h"

#include <gtest/gtest.h>

#include "baseapi/testkit/doubles.h"

namespace {

using namespace baseapi;

FilesListResponse responseWith(const std::string& name) {
    FileListMetadata file;
    file.fileName = name;
    FilesListResponse response;
    response.files = {file};
    return response;
}

TEST(FolderNames, GivesTheNamesThatTheServiceAnswers) {
    testkit::FileDouble files;
    files.at<&IFile::filesList>().succeed(responseWith("letter.txt"));

    FolderNames::Listing got;
    FolderNames(files).list("root", [&](const FolderNames::Listing& listing) { got = listing; });

    EXPECT_EQ(got.names, std::vector<std::string>{"letter.txt"});
    EXPECT_EQ(files.at<&IFile::filesList>().calls().at(0)->parentFileId, "root");
}

TEST(FolderNames, TriesOnceMoreUnlessItIsRefused) {
    testkit::FileDouble files;
    auto list = files.at<&IFile::filesList>();
    list.fail(-1, "request error Connection refused");
    list.fail(13000403, "not yours");

    FolderNames::Listing got;
    FolderNames(files).list("root", [&](const FolderNames::Listing& listing) { got = listing; });

    EXPECT_EQ(got.problem, "This folder is not yours.");
    EXPECT_EQ(list.calls().size(), 2u);
}

TEST(FolderNames, SaysNothingBeforeTheAnswer) {
    testkit::FileDouble files;
    files.at<&IFile::filesList>().succeed(responseWith("letter.txt"));
    files.hold();

    bool answered = false;
    FolderNames names(files);
    names.list("root", [&](const FolderNames::Listing&) { answered = true; });
    EXPECT_FALSE(answered);
    files.deliver();
    EXPECT_TRUE(answered);
}

}  // namespace
