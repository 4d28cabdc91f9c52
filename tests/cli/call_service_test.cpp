// The operations of the files, and what a call of any operation can end in.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "tests/cli/call_rows.h"

namespace quillbox_test::call_service {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string hashOfHello = "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824";
const std::string hashOfWorld = "486ea46224d1bb4fb680f34f7c9ad96a8f24ec88be73ea8e5a6c65260e9cb8a7";
const std::string newFile =
    R"({"fileName":"new","fileType":"45","parentFolder":["FOLDER"],"sha256":")" + hashOfWorld +
    R"(","length":5,"uploadMode":"multipart","autoRename":4,"containerId":"CONTAINER",)"
    R"("multiParts":[{"partNumber":1,"partSize":5,"partOffset":0}]})";

const std::vector<Row> rows = {
    {"getAccessFiles", "absent", absent, success + R"("list":[{"operateTime":")", R"("name":"known.txt")",
     get("access")},
    {"getAccessFiles", "fresh", "{}", success + R"("list":[)", "", get("access")},
    {"getAccessFiles", "full", R"({"imageProcess":"resize,w_100"})", success + R"("list":[)", "",
     get("access?imageProcess=resize,w_100")},
    {"getAccessFiles", "emptyImageProcess", R"({"imageProcess":""})", success + R"("list":[)", "",
     get("access?imageProcess=")},

    {"createDirectory", "absent", absent, refused},
    {"createDirectory", "fresh", "{}", failure(13000400, R"(\"fileName\" is missing or empty)"), "",
     post("directory")},
    {"createDirectory", "full",
     R"({"createdTime":"2026-01-02T03:04:05Z","description":"d","mimeType":"application/x-directory",)"
     R"("editedTime":"2026-01-02T03:04:05Z","fileName":"Bilder é","fileType":"10","parentFolder":["FOLDER"],)"
     R"("containerId":"CONTAINER","renameMode":3,"hidden":true,)"
     R"("smartFolderAttr":[{"name":"n","type":1,"sort":2,"value":"v"}],"scene":"s"})",
     success + R"("id":")", R"("fileName":"Bilder é","mimeType":"application/x-directory","code":0)",
     post("directory")},
    {"createDirectory", "inTheRoot", R"({"fileName":"another","parentFolder":[""]})", success + R"("id":")",
     R"("fileName":"another")", post("directory")},
    {"createDirectory", "nameTaken", R"({"fileName":"known","renameMode":3})",
     success + R"("id":"","fileName":"known","existFileId":"FOLDER","code":13000405)", "", post("directory")},
    {"createDirectory", "nameTakenInAnotherMode", R"({"fileName":"known"})", success + R"("id":")",
     R"("fileName":"known (1))", post("directory")},
    {"createDirectory", "unknownParent", R"({"fileName":"x","parentFolder":["none"]})", failure(13000404, ""),
     "", post("directory")},

    {"fileComplete", "absent", absent, refused},
    {"fileComplete", "fresh", "{}", failure(13000400, R"(\"fileId\" is missing or empty)"), "",
     post("files/complete")},
    {"fileComplete", "full", R"({"fileId":"FILE","sha256":")" + hashOfHello + "\"}", done, "",
     post("files/complete")},
    {"fileComplete", "otherHash", R"({"fileId":"FILE","sha256":")" + hashOfWorld + "\"}",
     failure(13000409, "the file was completed with another sha256"), "", post("files/complete")},

    {"fileRename", "absent", absent, refused},
    {"fileRename", "fresh", "{}", refused},
    {"fileRename", "withoutFileId", R"({"name":"new"})", refused},
    {"fileRename", "full", R"({"fileId":"FILE","containerId":"CONTAINER","name":"new.txt","renameMode":1})",
     done, "", post("files/rename/FILE")},
    {"fileRename", "nameTaken", R"({"fileId":"FILE","name":"known","renameMode":1})", failure(13000405, ""),
     "", post("files/rename/FILE")},

    {"filesCreate", "absent", absent, refused},
    {"filesCreate", "fresh", "{}", failure(13000400, R"(\"uploadMode\" is missing or empty)"), "",
     post("files/create")},
    {"filesCreate", "full", newFile, success + R"("fileId":")", R"("rapidUpload":false)",
     post("files/create")},
    {"filesCreate", "sameNameAndContent",
     R"({"fileName":"known.txt","sha256":")" + hashOfHello +
         R"(","length":5,"uploadMode":"multipart","multiParts":[{"partNumber":1,"partSize":5,"partOffset":0}]})",
     success + R"("fileId":"FILE","rapidUpload":false)", R"("exist":true,"multiParts":[])",
     post("files/create")},
    {"filesCreate", "knownContentWithoutProof",
     R"({"fileName":"other.txt","sha256":")" + hashOfHello +
         R"(","length":5,"uploadMode":"multipart","multiParts":[{"partNumber":1,"partSize":5,"partOffset":0}]})",
     failure(13000403, R"(the content is known, and \"proofCode\" is missing)"), "", post("files/create")},

    {"fileSearch", "absent", absent, refused},
    {"fileSearch", "fresh", "{}", success + R"("files":[{)", R"("total":2)", post("files/search")},
    {"fileSearch", "full",
     R"({"searchType":"s","pageInfo":{"pageSize":10,"pageCursor":""},"filter":{"keyWord":"KNOWN.",)"
     R"("containerId":"CONTAINER","parentFolder":"root","fileType":"","updateTimeRange":"","ownerId":""},)"
     R"("sortInfo":{"sortType":"1","sortDirection":"0"},"recycled":false,"recursived":true,"imageProcess":"i"})",
     success + R"("files":[{"updateTime":")", R"("id":"FILE","fileName":"known.txt","fileType":"45")",
     post("files/search")},

    {"filesList", "absent", absent, refused},
    {"filesList", "fresh", "{}", refused},
    {"filesList", "withoutType", R"({"containerId":"CONTAINER"})", refused},
    {"filesList", "full",
     R"({"type":"list","pageInfo":{"pageSize":10,"pageCursor":""},"sortInfo":{"sortType":1,"sortDirection":0},)"
     R"("containerId":"CONTAINER","parentFileId":"root","fileType":"","hidden":true,"imageProcess":"i"})",
     success + R"("files":[{"containers":["CONTAINER"],"createdTime":")",
     R"("id":"FOLDER","fileName":"known","fileType":"10")", post("files/list")},
    {"filesList", "anyType", R"({"type":"x"})", success + R"("files":[)", R"("category":"x")",
     post("files/x")},
    {"filesList", "inPages", R"({"type":"list","pageInfo":{"pageSize":1}})", success + R"("files":[)",
     R"("nextCursor":")", post("files/list")},

    {"filesPath", "absent", absent, refused},
    {"filesPath", "fresh", "{}", success + R"("fileIdPath":"/","namePath":"/")", "", get("files/path")},
    {"filesPath", "full", R"({"fileId":"FILE","containerId":"CONTAINER"})",
     success + R"("fileIdPath":"/FILE","namePath":"/known.txt")", "",
     get("files/path?fileId=FILE&containerId=CONTAINER")},
    {"filesPath", "emptyFileId", R"({"fileId":"","containerId":"CONTAINER"})", success, "",
     get("files/path?containerId=CONTAINER")},
    {"filesPath", "valueAsItIs", R"({"fileId":"FILE&containerId=none"})", failure(13000403, ""), "",
     get("files/path?fileId=FILE&containerId=none")},

    {"filesStatsDir", "absent", absent, refused},
    {"filesStatsDir", "fresh", "{}",
     success + R"("data":{"totalSize":"5","subDirCount":"1","subFileCount":"1"})", "",
     get("files/statsDir?recursive=true")},
    {"filesStatsDir", "full", R"({"fileId":"FOLDER","containerId":"CONTAINER","recursive":false})",
     success + R"("data":{"totalSize":"0","subDirCount":"0","subFileCount":"0"})", "",
     get("files/statsDir?fileId=FOLDER&containerId=CONTAINER&recursive=false")},

    {"getDownloadUrl", "absent", absent, refused},
    {"getDownloadUrl", "fresh", "{}", failure(13000400, R"(\"fileIds\" is missing)"), "",
     post("files/download")},
    {"getDownloadUrl", "full", R"({"containerId":"CONTAINER","fileIds":["FILE","none"]})",
     success + R"("batchCode":13000404,"downloads":[{"fileId":"FILE","fileName":"known.txt","url":"http://)",
     R"({"fileId":"none","code":"13000404","msg":")", post("files/download")},

    {"getFileDetail", "absent", absent, refused},
    {"getFileDetail", "fresh", "{}", refused},
    {"getFileDetail", "withoutFileId", R"({"containerId":"CONTAINER"})", refused},
    {"getFileDetail", "full", R"({"fileId":"FILE","containerId":"CONTAINER","imageProcess":"i"})",
     success + R"("id":"FILE","fileName":"known.txt",)", R"("usage":"content")", post("files/FILE/detail")},
    {"getFileDetail", "unknown", R"({"fileId":"none"})", failure(13000404, ""), "",
     post("files/none/detail")},

    {"getUploadUrl", "absent", absent, refused},
    {"getUploadUrl", "fresh", "{}", failure(13000400, R"(\"fileId\" is missing or empty)"), "",
     post("files/multipart/uploadUrl")},
    {"getUploadUrl", "full",
     R"({"fileId":"FILE","multiParts":[{"partNumber":1,"partSize":5,"partOffset":0}]})",
     failure(13000404, "there is no upload of a file"), "", post("files/multipart/uploadUrl")},

    {"getFilePreviewUrl", "absent", absent, refused},
    {"getFilePreviewUrl", "full", R"({"fileId":"FILE"})", success + R"("link":"http://127.0.0.1:)", "",
     get("files/preview/FILE/link")},
    {"getFilePreviewUrl", "unknown", R"({"fileId":"none"})", failure(13000404, ""), "",
     get("files/preview/none/link")},
};

TEST_P(CallRow, IsAnswered) {
    expectAnswer(GetParam());
}

INSTANTIATE_TEST_SUITE_P(OfTheFiles, CallRow, testing::ValuesIn(rows), nameOf);

TEST_F(CallServiceTest, EveryOperationOfTheFilesHasItsRows) {
    EXPECT_EQ(operationsIn(rows), operationsOf({"IFile"}));
}

TEST_F(CallServiceTest, TheStepsOfAnUploadFollowEachOther) {
    const auto created = call("filesCreate", newFile);
    const auto id = valueOf(created.output, "fileId");
    const auto part = R"(,"multiParts":[{"partNumber":1,"partSize":5,"partOffset":0}]})";
    const auto urls = call("getUploadUrl", R"({"fileId":")" + id + "\"" + part);
    EXPECT_EQ(urls.status, 0) << urls.output;
    const auto address = valueOf(urls.output, "uploadUrl");
    const auto complete = R"({"fileId":")" + id + R"(","sha256":")" + hashOfWorld + "\"}";
    EXPECT_THAT(call("fileComplete", complete).output, HasSubstr("part 1 is missing"));
    EXPECT_EQ(quillboxd_test::send("PUT", address, {}, "world").status, 200);
    EXPECT_THAT(call("fileComplete", complete).lines, ElementsAre(done));
    EXPECT_EQ(json({"download", "--file-id", id, "--to", "back"}).status, 0);
    EXPECT_EQ(contentOf(home_ / "back"), "world");
}

TEST_F(CallServiceTest, APreviewWithoutAFileIdEndsTheProcess) {
    const auto result = call("getFilePreviewUrl", "{}");
    EXPECT_EQ(result.status, -1);
    EXPECT_THAT(result.lines, IsEmpty());
}

TEST_F(CallServiceTest, WithoutATokenTheServiceRefuses) {
    const auto result = run({"call", "getAccessFiles", "--json"}, settings());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.lines, ElementsAre(StartsWith(failure(13000401, "the header Authorization"))));
}

/// What a call ends in where the service, or the way to it, misbehaves.
struct Misbehaviour {
    std::string name;
    /// The fault without its path.
    std::string fault;
    std::string event;
    int status = 1;
};

void PrintTo(const Misbehaviour& misbehaviour, std::ostream* out) {
    *out << misbehaviour.name;
}

class CallFailure : public CallServiceTest, public testing::WithParamInterface<Misbehaviour> {};

TEST_P(CallFailure, IsTold) {
    plan(R"({"path":"/quillbox/ose/v1/access",)" + GetParam().fault + "}");
    const auto result = call("getAccessFiles", absent);
    EXPECT_THAT(result.lines, ElementsAre(StartsWith(GetParam().event)));
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_THAT(sent(), SizeIs(1)) << "one call is one attempt";
}

const std::string unknownError = R"("message":"未知错误"})";

INSTANTIATE_TEST_SUITE_P(
    EachKind, CallFailure,
    testing::Values(
        Misbehaviour{"CodeAndMessage", R"("kind":"status","status":507,"body":{"code":4001,"msg":"full"})",
                     R"({"event":"failure","code":4001,"message":"full"})"},
        Misbehaviour{"CodeAlone", R"("kind":"status","status":500,"body":{"code":4001})",
                     R"({"event":"failure","code":4001,)" + unknownError},
        Misbehaviour{"MessageAlone", R"("kind":"status","status":400,"body":{"msg":"no"})",
                     R"({"event":"failure","code":-1,"message":"no"})"},
        Misbehaviour{"AnEmptyObject", R"("kind":"status","status":401,"body":{})",
                     R"({"event":"failure","code":-1,)" + unknownError},
        Misbehaviour{"NoObject", R"("kind":"status","status":502,"body":"gateway")",
                     R"({"event":"failure","code":-1,"message":"response status code = 502"})"},
        Misbehaviour{"AWrongTypeInTheRefusal", R"("kind":"status","status":503,"body":{"code":"x"})",
                     R"({"event":"failure","code":-1,"message":"response status code = 503"})"},
        Misbehaviour{"AStatusBelow400", R"("kind":"status","status":304,"body":{"code":7,"msg":"m"})",
                     R"({"event":"failure","code":-1,"message":"response status code = 304"})"},
        Misbehaviour{"ACodeInASuccess", R"("kind":"status","status":200,"body":{"code":4001,"msg":"no"})",
                     R"({"event":"success","record":{"code":4001,"msg":"no"}})", 0},
        Misbehaviour{"AnyStatusBelow300", R"("kind":"status","status":299,"body":{"code":1})",
                     R"({"event":"success","record":{"code":1}})", 0},
        Misbehaviour{"AWrongTypeInASuccess", R"("kind":"status","status":200,"body":{"list":5})",
                     R"({"event":"failure","code":-1,"message":"str to bean error )"},
        Misbehaviour{"APage", R"("kind":"html")",
                     R"({"event":"failure","code":-1,"message":"str to bean error )"},
        Misbehaviour{"NoContent", R"("kind":"empty")",
                     R"({"event":"failure","code":-1,"message":"str to bean error )"},
        Misbehaviour{"ABrokenConnection", R"("kind":"reset")",
                     R"({"event":"failure","code":-1,"message":"request error )"},
        Misbehaviour{"NoHttp", R"("kind":"garbage")",
                     R"({"event":"failure","code":-1,"message":"request error )"},
        Misbehaviour{"AnAnswerThatEndsEarly", R"("kind":"truncate","bytes":10)",
                     R"({"event":"failure","code":-1,"message":"request error )"}),
    [](const auto& each) { return each.param.name; });

TEST_F(CallServiceTest, AHostThatIsNoneEndsInItsFailure) {
    const auto at = [&](const std::string& host) {
        return run({"call", "getAccessFiles", "--json", "--host", host}).output;
    };
    const std::string invalid = R"({"event":"failure","code":-1,"message":"callRequest error: invalidURL"})";
    EXPECT_EQ(at("http://a b"), invalid + "\n");
    EXPECT_EQ(at("http://127.0.0.1:1/%zz"), invalid + "\n");
    EXPECT_EQ(at("http://127.0.0.1\r\nX: y"), invalid + "\n");
    EXPECT_THAT(at(""), StartsWith(R"({"event":"failure","code":-1,"message":"request error )"));
    EXPECT_THAT(at("http://127.0.0.1:1"),
                StartsWith(R"({"event":"failure","code":-1,"message":"request error )"));
    EXPECT_THAT(at("ftp://127.0.0.1"),
                StartsWith(R"({"event":"failure","code":-1,"message":"request error )"));
}

TEST_F(CallServiceTest, AFieldThatMustBeThereIsNoNull) {
    EXPECT_EQ(call("filesList", R"({"type":null})").lines, std::vector{refused});
    const auto result = call("filesList", R"({"type":"list","hidden":null})");
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("\"hidden\" must be of type"));
}

}  // namespace
}  // namespace quillbox_test::call_service
