// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicitemattribute.h"

#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zeltext.h"

#include <memory_resource>
#include <mutex>
#include <utility>

namespace mirn::zelchipview {

namespace {

// The memory of all attributes. The pool exists only while there are attributes: it is not a static object, because a
// host may delete its last attribute after the library's static objects are gone, and it ends with that attribute, so
// that a library that is unloaded leaves nothing behind.
class AttributeMemory final
{
public:
    void* allocate(std::size_t size)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_pool)
            m_pool = new std::pmr::unsynchronized_pool_resource;
        ++m_count;
        return m_pool->allocate(size);
    }

    void deallocate(void* attribute, std::size_t size)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pool->deallocate(attribute, size);
        if (--m_count == 0)
            delete std::exchange(m_pool, nullptr);
    }

private:
    std::mutex m_mutex;
    std::pmr::unsynchronized_pool_resource* m_pool = nullptr;
    std::size_t m_count = 0; // attributes that exist
};

AttributeMemory memory;

} // namespace

ZELGraphicItemAttribute::ZELGraphicItemAttribute() = default;
ZELGraphicItemAttribute::~ZELGraphicItemAttribute() = default;

#ifdef __SANITIZE_ADDRESS__
// AddressSanitizer finds mistakes only with blocks of its own heap.
void* ZELGraphicItemAttribute::operator new(std::size_t size)
{
    return ::operator new(size);
}

void ZELGraphicItemAttribute::operator delete(void* attribute, std::size_t size)
{
    ::operator delete(attribute, size);
}
#else
void* ZELGraphicItemAttribute::operator new(std::size_t size)
{
    return memory.allocate(size);
}

void ZELGraphicItemAttribute::operator delete(void* attribute, std::size_t size)
{
    memory.deallocate(attribute, size);
}
#endif

void* ZELGraphicItemAttribute::getAttribute(zelgraphic_attribute_key)
{
    return nullptr;
}

void ZELGraphicItemAttribute::setAttribute(const zel_SingleGraphItem& record)
{
    itemId = record.id;
    elementName = fromEngineText(record.name);
    toolTip = fromEngineText(record.tooltip);
    layer = record.layer;
    kind = record.kind;
    flag = record.flag;
}

void ZELGraphicItemAttribute::setFillColor(const unsigned int&)
{ }

void ZELGraphicItemAttribute::setToDefaultValue(zelgraphic_attribute_key)
{ }

} // namespace mirn::zelchipview
