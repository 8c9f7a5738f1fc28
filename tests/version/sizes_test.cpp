// What hosts were built with: these sizes hold for all of 1.x, since hosts make such objects
// themselves and derive from some. Standard libraries differ in their strings; these are the sizes
// with that of GCC on 64 bits. scripts/check-abi.sh looks at what is inside.
#include <cstddef>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "found/foundation_user.h"
#include "found/kvml_writer.h"
#include "found/read_messenger.h"
#include "kv/version_text.h"
#include "kv/xml_error.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

#if defined(__GLIBCXX__) && _GLIBCXX_USE_CXX11_ABI && __SIZEOF_POINTER__ == 8 && \
    !defined(_GLIBCXX_DEBUG)

namespace {

template <class Type, std::size_t size>
constexpr bool hasSize = sizeof(Type) == size && alignof(Type) == 8;

static_assert(hasSize<Found::Foundation, 96>);
static_assert(hasSize<Found::FoundationManager, 88>);
static_assert(hasSize<Found::FoundationUser, 8>);
static_assert(hasSize<Found::KvmlWriter, 8>);
static_assert(hasSize<Found::Umo::BeddingReader, 8>);
static_assert(hasSize<Found::Umo::BeddingWriter, 8>);
static_assert(hasSize<Found::Umo::ReadMessenger, 8>);
static_assert(hasSize<KvVector3D, 24>);
static_assert(hasSize<KvXmlAttributeData, 8>);
static_assert(hasSize<KvXmlData, 48>);
static_assert(hasSize<KvXmlTree, 24>);
static_assert(hasSize<KvXmlN::AttributeData, 48>);
static_assert(hasSize<KvXmlN::Data, 48>);
static_assert(hasSize<KvXmlN::Document, 8>);
static_assert(hasSize<KvXmlError, 48>);
static_assert(hasSize<Tools::VersionText, 32>);

}  // namespace

#endif
