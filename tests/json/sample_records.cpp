#include "tests/json/sample_records.h"

#include "baseapi/json/define_codec.h"

namespace baseapi {

template const RecordCodec& codecOf<sample::Leaf>();
template const RecordCodec& codecOf<sample::Tree>();
template const RecordCodec& codecOf<sample::Page>();
template const RecordCodec& codecOf<sample::Sparse>();
template const RecordCodec& codecOf<sample::Device>();
template const RecordCodec& codecOf<sample::Lamp>();
template const RecordCodec& codecOf<sample::Valve>();
template const RecordCodec& codecOf<sample::Ticket>();
template const RecordCodec& codecOf<sample::Everything>();

}  // namespace baseapi
