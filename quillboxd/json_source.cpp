// Boost.JSON, compiled into this program.
#include <boost/json/src.hpp>
