#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace bench {

struct Request {
    std::string verb;
    std::string path;
    std::string query;
    std::string host;
    std::uint64_t bodyLength = 0;
    /// How many connections the server has taken so far.
    std::uint64_t connections = 0;
    /// The body of a POST; any other body is thrown away as it comes.
    std::string body;
};

struct Answer {
    int status = 200;
    std::string body;
    /// Bytes of no meaning that follow the body.
    std::uint64_t filler = 0;
    /// The announced length of an answer to HEAD.
    std::uint64_t headLength = 0;
    std::string extraHeaders;
};

/// What the other side of the comparisons answers: three file operations, part addresses, a content address,
/// what a backup of folders asks for, the number of connections, and as much of S3 as rclone asks for.
class SinkAnswers {
  public:
    Answer answer(const Request& request);

  private:
    std::string backupBody(const Request& request);
    Answer answerBucket(const Request& request);

    /// The scopes sent last, as a JSON array.
    std::string scopes_ = "[]";
    /// Size by path of what was put into the bucket.
    std::map<std::string, std::uint64_t> objects_;
};

}  // namespace bench
