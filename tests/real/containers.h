#ifndef CONTAINERS_H
#define CONTAINERS_H

#include <algorithm>
#include <functional>
#include <memory>

namespace containers {

template <bool Condition, class Then, class Else> struct If { typedef Then Result; };
template <class Then, class Else> struct If<false, Then, Else> { typedef Else Result; };

template<typename T> class Default;
template<> class Default<int> { public: static int value() { return 0; } };

/// A vector whose first N elements need no memory of their own.
template < class T , int N = 8 , class Allocator = std::allocator<T> >
class SmallVector : private Allocator
{
    typedef SmallVector<T, N, Allocator> Self;
  public:
    typedef T value_type;
    typedef T* iterator;
    typedef const T *const_iterator;
    typedef typename Allocator::size_type size_type;

    SmallVector() : begin_(inline_), size_(0), capacity_(N) { }
    SmallVector(const Self &other) : Allocator(other), begin_(inline_), size_(0), capacity_(N)
    {
        assign(other.begin(), other.end());
    }
    template <class Iterator> SmallVector(Iterator first, Iterator last)
        : begin_(inline_),
          size_(0),      // assign() sets it
          capacity_(N)
    {
        assign(first, last);
    }
    ~SmallVector() { clear(); if (begin_ != inline_) Allocator::deallocate(begin_, capacity_); }

    Self & operator = (const Self & other) {
        if (this != &other) { Self copy(other); swap(copy); }
        return *this;
    }

    T& operator[](size_type i) { return begin_[i]; }
    const T & operator[] (size_type i) const { return begin_[i]; }
    operator bool() const { return size_ != 0; }
    T *operator->() { return begin_; }
    bool operator<(const Self& other) const
    { return std::lexicographical_compare(begin(), end(), other.begin(), other.end()); }

    iterator begin() { return begin_; }      const_iterator begin() const { return begin_; }
    iterator end() { return begin_ + size_; }  const_iterator end() const { return begin_ + size_; }
    size_type size() const { return size_; }

    void push_back(const T& value)
    {
        if (size_ == capacity_)
            reserve(capacity_ * 2 > 1 ? capacity_ * 2 : 1);
        new (static_cast<void*>(begin_ + size_)) T(value);
        ++size_;
    }

    template <class Iterator>
    void assign(Iterator first, Iterator last) {
        clear();
        for ( ; first != last; ++first) push_back(*first);
    }

    void reserve(size_type wanted);
    void clear() { while (size_ > 0) (begin_ + --size_)->~T(); }
    void swap(Self& other) throw();

  private:
    T *begin_;
    T inline_[N];
    size_type size_, capacity_;

    template <class U, int M, class A> friend class SmallVector;
    friend void swap(Self &a, Self &b) { a.swap(b); }
};

template <class T, int N, class Allocator>
void SmallVector<T, N, Allocator>::reserve(size_type wanted)
{
    if (wanted <= capacity_) return;
    T* grown = Allocator::allocate(wanted, static_cast<const void *>(0));
    size_type done = 0;
    try {
        for (const_iterator it = begin_; it < begin_ + size_; ++it, ++done)
            Allocator::construct(grown + done, *it);
    } catch (...) {
        while (done-- > 0) Allocator::destroy(grown + done);
        Allocator::deallocate(grown, wanted);
        throw;
    }
    if (begin_ != inline_)
        Allocator::deallocate(begin_, capacity_);
    begin_ = grown, capacity_ = wanted;
}

template <class Pair>
struct SelectSecond : public std::unary_function<Pair, typename Pair::second_type> {
    const typename Pair::second_type& operator()(const Pair &pair) const { return pair.second; }
};

template <class T, class Compare>
inline const T& middle(const T& a, const T& b, const T& c, Compare compare)
{
    if (compare(a, b))
        if (compare(b, c)) return b;
        else if (compare(a, c)) return c;
        else return a;
    else if (compare(a, c)) return a;
    else if (compare(b, c)) return c;
    else return b;
}

template <class T> int Counter<T>::count_ = 0;
template class SmallVector<char, 64>;

}

#endif
