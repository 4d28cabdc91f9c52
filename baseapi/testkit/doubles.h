#pragma once

/// A double of every interface of the library, header only and without any test framework:
///
///     testkit::FileDouble files;
///     files.at<&IFile::filesList>().succeed(FilesListResponse{...});
///     codeUnderTest(files);
///     assert(files.at<&IFile::filesList>().calls().size() == 1);

#include "baseapi/testkit/engine_doubles.h"
#include "baseapi/testkit/service_doubles.h"
