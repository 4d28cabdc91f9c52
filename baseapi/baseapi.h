#pragma once

/// The whole public interface: the session and its services, their records and results, the engines, and what
/// a host can put in place of the platform's parts. Pulls in no outside library's header.

#include "baseapi/api/files/i_file.h"
#include "baseapi/api/records/archive_data.h"
#include "baseapi/api/records/file.h"
#include "baseapi/api/records/file_bean.h"
#include "baseapi/api/records/file_id_info.h"
#include "baseapi/api/user/i_user.h"
#include "baseapi/core/cancelable.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/core/constants.h"
#include "baseapi/core/preferences.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/core/url.h"
#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"
#include "baseapi/net/base_response.h"
#include "baseapi/net/network_result.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/cache_records.h"
#include "baseapi/transfer/download_result.h"
#include "baseapi/transfer/file_info_util.h"
#include "baseapi/transfer/i_transfer.h"
#include "baseapi/transfer/sha256_result.h"
#include "baseapi/transfer/upload_process_result.h"
