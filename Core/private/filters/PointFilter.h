#pragma once

#include <memory>
#include <vector>

#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/Filter.h"
#include "Core/private/filters/PointRow.h"

namespace mox::filters {

/// An input image without its voxel type: a virtual call per row, none per voxel.
class PointInput {
public:
    /// One thread's rows.
    struct Rows {
        virtual ~Rows() = default;
        virtual void const* read(access::Position const& position, unsigned int count) = 0;
    };

    virtual ~PointInput() = default;
    virtual std::unique_ptr<Rows> makeRows() const = 0;
    virtual Stretch stretch(access::Position const& position, unsigned int count) const = 0;
    virtual bool isContiguous() const = 0;
    virtual ImageModel const& image() const = 0;
};

/// An output image, likewise.
class PointOutput {
public:
    struct Rows {
        virtual ~Rows() = default;
        virtual void* place(access::Position const& position, unsigned int count) = 0;
        virtual void flush() = 0;
    };

    virtual ~PointOutput() = default;
    virtual std::unique_ptr<Rows> makeRows() const = 0;
    virtual void* pointer(access::Position const& position, unsigned int count) const = 0;
    virtual bool isContiguous() const = 0;
    virtual ImageModel const& image() const = 0;
    virtual access::Sizes const& sizes() const = 0;
    virtual std::size_t voxelSize() const = 0;
};

/// An input of one spectral channel serves all channels of the output.
template <class ViewType>
class TypedPointInput final : public PointInput {
public:
    explicit TypedPointInput(boost::shared_ptr<ViewType> view)
        : view_(std::move(view))
    {
    }

    std::unique_ptr<Rows> makeRows() const override { return std::make_unique<TypedRows>(*this); }
    Stretch stretch(access::Position const& position, unsigned int count) const override
    {
        return {view_->pointer(within(position), count), sizeof(typename ViewType::Voxel)};
    }
    bool isContiguous() const override { return view_->isContiguous(); }
    ImageModel const& image() const override { return view_->image(); }

private:
    struct TypedRows final : Rows {
        explicit TypedRows(TypedPointInput const& input)
            : input_(input)
            , cache_(*input.view_)
        {
        }

        void const* read(access::Position const& position, unsigned int count) override
        {
            return cache_.getRow(0, count, input_.within(position)).voxels();
        }

    private:
        TypedPointInput const& input_;
        access::RowCacheRead<ViewType> cache_;
    };

    access::Position within(access::Position position) const
    {
        if (view_->sizes().spectralSeries == 1) {
            position.s = 0;
        }
        return position;
    }

    boost::shared_ptr<ViewType> view_;
};

template <class ViewType>
class TypedPointOutput final : public PointOutput {
public:
    explicit TypedPointOutput(boost::shared_ptr<ViewType> view)
        : view_(std::move(view))
    {
    }

    std::unique_ptr<Rows> makeRows() const override { return std::make_unique<TypedRows>(*view_); }
    void* pointer(access::Position const& position, unsigned int count) const override
    {
        return view_->writablePointer(position, count);
    }
    bool isContiguous() const override { return view_->isContiguous(); }
    ImageModel const& image() const override { return view_->image(); }
    access::Sizes const& sizes() const override { return view_->sizes(); }
    std::size_t voxelSize() const override { return sizeof(typename ViewType::Voxel); }

private:
    struct TypedRows final : Rows {
        explicit TypedRows(ViewType const& view)
            : cache_(view)
        {
        }

        void* place(access::Position const& position, unsigned int count) override
        {
            row_ = &cache_.getRow(0, count, position);
            return row_->voxels();
        }
        void flush() override { cache_.flush(*row_); }

    private:
        using Cache = access::RowCacheReadWrite<ViewType>;
        Cache cache_;
        typename Cache::Row* row_ = nullptr;
    };

    boost::shared_ptr<ViewType> view_;
};

/// Carries a point kernel over images of the same sizes. Compiled once for all voxel types and kernels: the typed
/// filters are shells over it. The output may be one of the inputs.
class PointFilter : public Filter {
public:
    ~PointFilter() override { detach(); }

protected:
    PointFilter(BaseAlgorithm* owner, PointRow const& kernel)
        : Filter(owner)
        , kernel_(kernel)
    {
    }

    void run(Filter2dTag dimensions);
    void run(Filter3dTag dimensions);

    std::vector<std::unique_ptr<PointInput>> inputs_;
    std::unique_ptr<PointOutput> output_;

private:
    template <class Dimensions>
    void runOver(Dimensions dimensions);
    Store store() const;

    PointRow kernel_;
};

} // namespace mox::filters
