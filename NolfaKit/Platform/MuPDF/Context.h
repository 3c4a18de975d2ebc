#pragma once

#include "Platform/MuPDF/Guard.h"
#include "Platform/MuPDF/Heap.h"

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace nolfa::mupdf {

/// The library's context: belongs to one thread at a time, with the documents that were opened in it.
class Context {
public:
    static constexpr std::size_t usualCache = 48U << 20U;
    static constexpr std::size_t usualQuota = 768U << 20U;

    /// @param cacheSize  bytes of decoded things that the library keeps
    /// @param quota      bytes in all
    /// @throws PlatformError
    explicit Context(std::size_t cacheSize = usualCache, std::size_t quota = usualQuota);
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;
    ~Context();

    [[nodiscard]] fz_context *get() const noexcept { return m_context; }

    /// Calls @p body with the context. A failure of the library jumps out of it, past every frame: the body must
    /// own nothing with a destructor, and at most one call of it may make something that its result then owns.
    /// @throws PlatformError with the library's words
    template <typename Body> void call(Body &&body) const
    {
        using Function = std::remove_reference_t<Body>;
        static_assert(noexcept(body(std::declval<fz_context *>())), "No C++ exception may cross the library's frames.");
        run([](fz_context *context, void *function) { (*static_cast<Function *>(function))(context); }, &body);
    }

private:
    void run(void (*work)(fz_context *, void *), void *argument) const;

    std::unique_ptr<Heap> m_heap; ///< outlives the context
    fz_context *m_context = nullptr;
};

/// Owns one of the library's objects.
template <typename Object, void (*Drop)(fz_context *, Object *)> class Handle {
public:
    Handle() = default;
    Handle(const Context &context, Object *object) noexcept
        : m_context(&context)
        , m_object(object)
    {
    }
    Handle(Handle &&other) noexcept
        : m_context(other.m_context)
        , m_object(std::exchange(other.m_object, nullptr))
    {
    }
    Handle &operator=(Handle &&other) noexcept
    {
        std::swap(m_context, other.m_context);
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Handle()
    {
        if (m_object != nullptr)
            Drop(m_context->get(), m_object);
    }

    [[nodiscard]] Object *get() const noexcept { return m_object; }

private:
    const Context *m_context = nullptr;
    Object *m_object = nullptr;
};

} // namespace nolfa::mupdf
