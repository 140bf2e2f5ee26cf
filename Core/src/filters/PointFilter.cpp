#include "Core/private/filters/PointFilter.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "Core/private/access/FixedBorderCondition.h"
#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/ThreadStore.h"

namespace mox::filters {

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

namespace {

template <class T>
class TypedPointInput final : public PointInput {
public:
    explicit TypedPointInput(ImageModel const& image)
        : view_(image, access::FixedBorderCondition<T>::create(T()))
    {
    }

    std::unique_ptr<Rows> makeRows() const override { return std::make_unique<TypedRows>(*this); }
    Stretch stretch(access::Position const& position, unsigned int count) const override
    {
        return {view_.pointer(within(position), count), sizeof(T)};
    }
    bool isContiguous() const override { return view_.isContiguous(); }
    ImageModel const& image() const override { return view_.image(); }

private:
    struct TypedRows final : Rows {
        explicit TypedRows(TypedPointInput const& input)
            : input_(input)
            , cache_(input.view_)
        {
        }

        void const* read(access::Position const& position, unsigned int count) override
        {
            return cache_.getRow(0, count, input_.within(position)).voxels();
        }

    private:
        TypedPointInput const& input_;
        access::RowCacheRead<access::View<T>> cache_;
    };

    access::Position within(access::Position position) const
    {
        if (view_.sizes().spectralSeries == 1) {
            position.s = 0;
        }
        return position;
    }

    access::View<T> view_;
};

template <class T>
class TypedPointOutput final : public PointOutput {
public:
    explicit TypedPointOutput(ImageModel& image)
        : view_(image, access::FixedBorderCondition<T>::create(T()))
    {
    }

    std::unique_ptr<Rows> makeRows() const override { return std::make_unique<TypedRows>(view_); }
    void* pointer(access::Position const& position, unsigned int count) const override
    {
        return view_.writablePointer(position, count);
    }
    bool isContiguous() const override { return view_.isContiguous(); }
    ImageModel const& image() const override { return view_.image(); }
    access::Sizes const& sizes() const override { return view_.sizes(); }
    std::size_t voxelSize() const override { return sizeof(T); }

private:
    struct TypedRows final : Rows {
        explicit TypedRows(access::View<T> const& view)
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
        using Cache = access::RowCacheReadWrite<access::View<T>>;
        Cache cache_;
        typename Cache::Row* row_ = nullptr;
    };

    access::View<T> view_;
};

using Inputs = std::vector<std::unique_ptr<PointInput>>;

/// What the leaves of one slice share.
class PointWork final : public LeafWork {
public:
    PointWork(PointRow const& kernel, Inputs const& inputs, PointOutput const& output, Store store)
        : kernel_(kernel)
        , inputs_(inputs)
        , output_(output)
        , store_(store)
        , areAllContiguous_(output.isContiguous() && std::all_of(inputs.begin(), inputs.end(), [](auto const& input) {
                                return input->isContiguous();
                            }))
    {
    }

    /// Rows that follow each other in memory are taken as one.
    void operator()(access::Block const& leaf) override
    {
        if (areAllContiguous_ && leaf.getNumOfColumns() == output_.sizes().columns) {
            forEachPlan(leaf, [&](access::Position const& p) {
                applyToMemory(p, leaf.getNumOfColumns(), std::size_t{leaf.getNumOfColumns()} * leaf.getNumOfRows());
            });
            return;
        }
        Borrowed<ThreadRows> const rows(threadRows_, [this] { return std::make_unique<ThreadRows>(inputs_, output_); });
        forEachPlan(leaf, [&](access::Position p) {
            for (unsigned int y = 0; y < leaf.getNumOfRows(); ++y, ++p.y) {
                applyToRow(*rows, p, leaf.getNumOfColumns());
            }
        });
    }

private:
    struct ThreadRows final : ThreadStore::Item {
        ThreadRows(Inputs const& from, PointOutput const& to)
            : output(to.makeRows())
        {
            for (auto const& input : from) {
                inputs.push_back(input->makeRows());
            }
        }

        std::vector<std::unique_ptr<PointInput::Rows>> inputs;
        std::unique_ptr<PointOutput::Rows> output;
    };

    template <class Work>
    static void forEachPlan(access::Block const& leaf, Work const& work)
    {
        access::Position p = access::detail::within(leaf, 0, 0, 0, 0, 0);
        for (unsigned int z = 0; z < leaf.getNumOfPlans(); ++z, ++p.z) {
            work(p);
        }
    }

    void applyToMemory(access::Position const& p, unsigned int columns, std::size_t count) const
    {
        std::array<Stretch, maxNumOfInputs> stretches = {};
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            stretches[i] = inputs_[i]->stretch(p, columns);
        }
        applyToStretch(kernel_, stretches.data(), inputs_.size(), output_.pointer(p, columns), output_.voxelSize(),
                       count, store_);
    }

    void applyToRow(ThreadRows& rows, access::Position const& p, unsigned int columns) const
    {
        std::array<void const*, maxNumOfInputs> read = {};
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            read[i] = rows.inputs[i]->read(p, columns);
        }
        kernel_(read.data(), rows.output->place(p, columns), columns);
        rows.output->flush();
    }

    PointRow const& kernel_;
    Inputs const& inputs_;
    PointOutput const& output_;
    Store store_;
    bool areAllContiguous_;
    ThreadStore threadRows_;
};

} // namespace

PointFilter::PointFilter(BaseAlgorithm* owner, PointRow const& kernel)
    : Filter(owner)
    , kernel_(kernel)
{
}

PointFilter::~PointFilter()
{
    detach();
}

void PointFilter::addInput(ImageModel const& image)
{
    assert(inputs_.size() < maxNumOfInputs);
    dispatch(RealVoxels(), image.getVoxelType(),
             [&]<class T>() { inputs_.push_back(std::make_unique<TypedPointInput<T>>(image)); });
}

void PointFilter::setOutput(ImageModel& image)
{
    dispatch(RealVoxels(), image.getVoxelType(),
             [&]<class T>() { output_ = std::make_unique<TypedPointOutput<T>>(image); });
}

void PointFilter::run(Filter2dTag dimensions)
{
    runOver(dimensions);
}

void PointFilter::run(Filter3dTag dimensions)
{
    runOver(dimensions);
}

template <class Dimensions>
void PointFilter::runOver(Dimensions dimensions)
{
    access::Sizes const sizes = output_->sizes();
    announce(sizes.numOfVoxels());
    Store const howToStore = store();
    forEachSlice(dimensions, sizes, [&](Slice const& slice) {
        PointWork work(kernel_, inputs_, *output_, howToStore);
        forEachLeaf(dimensions, sizes, slice, work);
    });
}

Store PointFilter::store() const
{
    bool const isInput = std::any_of(inputs_.begin(), inputs_.end(),
                                     [&](auto const& input) { return &input->image() == &output_->image(); });
    return isInput ? Store::cached : storeFor(output_->sizes().numOfVoxels() * output_->voxelSize());
}

} // namespace mox::filters
