#include "baseapi/transfer/upload_process.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/callback.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/log.h"
#include "baseapi/json/codec.h"
#include "baseapi/json/utf8.h"
#include "baseapi/platform/fatal_stop.h"
#include "baseapi/platform/worker_pool.h"
#include "baseapi/transfer/file_info_util.h"
#include "baseapi/transfer/local_file.h"
#include "baseapi/transfer/proof_code_calculator.h"

namespace baseapi::inline v1 {
namespace {

/// The service must have sent the value.
template <class T>
const T& required(const std::optional<T>& value, std::string_view name) {
    if (!value) fatalStop("UploadProcess: the answer lacks " + std::string(name));
    return *value;
}

}  // namespace

void UploadProcess::run() {
    retainSelf_ = shared_from_this();
    auto prepared = prepare();
    if (!prepared) return fail();
    const std::string hash = prepared->hash;
    auto bean = creationBean(std::move(*prepared));
    logLine("creareOrgFile sha256 ", hash);
    logLine("creareOrgFile proofCode ", bean.proofCode.value_or("nil"));
    requestCreation(std::move(bean), [self = shared_from_this(), hash](const auto& result) {
        result.visit(
            [&](const NetworkResult<FilesCreateResponse>::success& it) { self->onCreated(it.record, hash); },
            [&](const NetworkFailure& it) {
                logLine("filesCreateRequest failure code = ", it.code, ", msg = ", it.message);
                self->fail();
            });
    });
}

void UploadProcess::cancel() {
    logLine("uploadProcessTask cancel");
    hasCancel_ = true;
    uploadManager->cancel();
}

// Preparing: hash, parts and length of the file.

std::optional<UploadProcess::Prepared> UploadProcess::prepare() const {
    if (!file || !file->isFileURL() || !defaultSliceFile || hasCancel_) return std::nullopt;
    const LongWork hashing;
    auto result = sliced();
    if (!result) return std::nullopt;
    const auto length = fileLength();
    if (!length) {
        logLine("filesCreateRequest length is nil.");
        return std::nullopt;
    }
    logLine("filesCreateRequest length ", *length);
    return Prepared{std::move(result->hash), multiPartInfos(std::move(result->parts)), *length};
}

/// A slicer that throws has no text to give.
std::optional<std::string> UploadProcess::slice() const {
    std::optional<std::string> text;
    invokeCallback([&] { text = defaultSliceFile->calcSha256(*file); });
    return text;
}

std::optional<Sha256Result> UploadProcess::sliced() const {
    auto text = slice();
    if (!text) {
        logLine("filesCreateRequest get sha256 nil");
        return std::nullopt;
    }
    if (!isValidUTF8(*text)) {
        logLine("Unable to convert JSON string to Data");
        return std::nullopt;
    }
    Sha256Result result;
    if (const auto error = decode(*text, result)) {
        logLine("JSON decoding failed: ", error->description());
        return std::nullopt;
    }
    return result;
}

std::optional<std::int64_t> UploadProcess::fileLength() const {
    std::error_code error;
    const auto length = std::filesystem::file_size(file->path(), error);
    if (!error) return static_cast<std::int64_t>(length);
    logLine("获取文件大小失败: ", error.message());
    return std::nullopt;
}

// Creating.

FilesCreateBean UploadProcess::creationBean(Prepared prepared) const {
    FilesCreateBean bean;
    bean.mimeType = FileInfoUtil::mimeType(file->pathExtension());
    bean.fileName = file->lastPathComponent();
    bean.fileType = FileInfoUtil::fileTypeCode(*file);
    bean.parentFolder = {cloudPath.value_or("root")};
    bean.sha256 = std::move(prepared.hash);
    bean.length = prepared.length;
    bean.uploadMode = "multipart";
    bean.autoRename = autoName;
    bean.multiParts = std::move(prepared.parts);
    bean.containerId = containId;
    bean.proofCode = proofCode(prepared.length);
    return bean;
}

/// An empty file has no bytes to prove, and goes up without a proof.
std::optional<std::string> UploadProcess::proofCode(std::int64_t length) const {
    if (length == 0) return std::nullopt;
    return ProofCodeCalculator::calcProofCode(CloudInstance::shared().token.get().value_or(""), *file);
}

void UploadProcess::onCreated(const FilesCreateResponse& response, const std::string& hash) {
    const auto text = encode(response);
    if (!text) {
        logLine("filesCreateRequest success but change json error");
        return fail();
    }
    logLine("filesCreateRequest success resp = ", *text);
    if (required(response.code, "code") != 0) {
        logLine("file create failed:", required(response.msg, "msg"));
        return fail();
    }
    if (required(response.rapidUpload, "rapidUpload")) {
        logLine("file is rapid");
        return succeed("rapid success");
    }
    if (required(response.exist, "exist")) {
        logLine("file is exist");
        return succeed("exist success");
    }
    if (hasCancel_) {
        logLine("file hasCancel");
        return fail();
    }
    sendParts(required(response.fileId, "fileId"), hash, required(response.multiParts, "multiParts"));
}

// Uploading the parts.

void UploadProcess::sendParts(const std::string& id, const std::string& hash,
                              const std::vector<MultiPartInfo>& parts) {
    logLine(TAG, ", start upload multiParts, fileid = ", id);
    if (!canOpenFile()) return fail();
    if (parts.empty()) return complete(id, hash);
    for (const auto& part : parts) addPart(part);
    uploadManager->hasDownloadSize = 0;
    logLine(TAG, ", uploadManager continue hasDownloadSize = ", uploadManager->hasDownloadSize);
    uploadManager->onTotalCallback = [process = weak_from_this(), id,
                                      hash](const UploadProcessResult& event) {
        if (const auto self = process.lock()) self->onParts(event, id, hash);
    };
    uploadManager->submit();
}

/// Looks before the parts are queued: each part opens the file for itself and assumes that it can.
bool UploadProcess::canOpenFile() const {
    try {
        const LocalFile looked(*file);
        return true;
    } catch (const std::system_error& error) {
        logLine("文件打开失败: ", error.what());
        return false;
    }
}

void UploadProcess::addPart(const MultiPartInfo& part) {
    const auto task = std::make_shared<UploadTask>();
    task->uploadUrl = required(part.uploadUrl, "uploadUrl");
    task->file = file;
    task->offset = part.partOffset;
    task->length = part.partSize;
    task->hash1 = std::to_string(part.partNumber) + std::to_string(part.partOffset);
    logLine(TAG, ", uploadManager subHash = ", task->hash1, ", task = ", task->description());
    uploadManager->add(task);
}

void UploadProcess::onParts(const UploadProcessResult& event, const std::string& id,
                            const std::string& hash) {
    if (ended_) return;  // a cancelled manager repeats its total result
    event.visit(
        [&](const UploadProcessResult::onProgress& it) {
            logLine("上传进度: ", it.bytes, "/", it.total, " 字节");
            forward(event);
        },
        [&](const UploadProcessResult::onSuccess& it) {
            logLine("upload process task 上传成功: 状态码 ", it.code, ", 消息: ", it.msg);
            complete(id, hash);
        },
        [&](const UploadProcessResult::onFailure& it) {
            logLine("上传失败: 错误码 ", it.errCode, ", 消息: ", it.errMsg);
            fail();
        },
        [&](const UploadProcessResult::onFileCreate& it) {
            logLine("文件创建响应: ", encode(it.response).value_or("unknow"));
            forward(event);
        },
        [&](const UploadProcessResult::onItemFinish& it) {
            logLine("子项 ", it.index, " (", it.subHash, ") 处理", it.isSuccess);
            forward(event);
        });
}

// Completing.

void UploadProcess::complete(const std::string& id, const std::string& hash) {
    logLine("====start submitComplete, fileId = ", id, "====");
    CloudInstance::shared().getFileImpl().fileComplete(
        FilesCompleteBean{.fileId = id, .sha256 = hash}, [self = shared_from_this()](const auto& result) {
            result.visit(
                [&](const NetworkResult<BaseResponse>::success& it) { self->onCompleted(it.record); },
                [&](const NetworkFailure& it) {
                    logLine("filesCompleteRequest failure code = ", it.code, ", msg = ", it.message);
                    self->fail();
                });
        });
}

/// Whatever code the response holds, the file is complete.
void UploadProcess::onCompleted(const BaseResponse& response) {
    const auto text = encode(response);
    if (!text) {
        logLine("filesCompleteRequest success but change json error");
        return fail();
    }
    succeed("success");
    logLine("filesCompleteRequest success resp = ", *text);
}

// Ending.

void UploadProcess::succeed(std::string msg) {
    end({UploadProcessResult::onSuccess{0, std::move(msg)}});
}

void UploadProcess::fail() {
    end({UploadProcessResult::onFailure{failureCode_, "file invaild"}});
}

void UploadProcess::end(UploadProcessResult last) {
    if (ended_.exchange(true)) return;
    invokeCallback(onCallback, std::move(last));
    const auto self = std::exchange(retainSelf_, nullptr);
    logLine("UploadProcessTask release self ", timeStamp);
}

void UploadProcess::forward(const UploadProcessResult& event) const {
    invokeCallback(onCallback, event);
}

}  // namespace baseapi::inline v1
