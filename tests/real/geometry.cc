// geometry.cc -- GNU style, half of the time.
#include "geometry.h"
#include <cmath>
#include <list>

extern "C" double hypot (double, double);
extern "C++" {
  #include "compat.h"
}

namespace geo
{
  using std::list;
  namespace detail = internal::v1;
  static const double pi = 3.14159265358979, tau = 2*pi , epsilon=1e-9;
  double Shape::scale = 1. ;

  typedef double (Shape::*Measure) () const;
  typedef double (*Combine) (double, double);

  struct Named_measure { const char *name; Measure measure; } measures[] =
  {
    { "area", &Shape::area },
    { "perimeter", &Shape::perimeter }
  };

  class Polygon : public Shape,
                  protected virtual Printable, private std::list<Point *>
  {
  public:
    Polygon ();
    explicit Polygon (const list<Point> &points);
    virtual ~Polygon ();
    double area () const, perimeter () const;
    union { long tag; void *owner; } user;
    enum { Open, Closed } state;
  private:
    class Edge;
    friend class Edge;
    mutable double area_;   // negative: unknown
  };

  class Polygon::Edge
  {
    const Point &from_, &to_;
  public:
    Edge (const Point &from, const Point &to): from_ (from), to_ (to) { }
    double length () const { return hypot (to_.x - from_.x, to_.y - from_.y); }
    bool
    operator () (const Point *p) const
    { return (p->x - from_.x) * (to_.y - from_.y) > (p->y - from_.y) * (to_.x - from_.x) ; }
  };

  static inline double
  combine (Combine f, const double *begin, const double *const end,
           double start = 0.0)
  {
    while (begin < end)
      start = f (start, *begin++);
    return start;
  }

  double
  Polygon::area () const
  {
    if (area_ >= 0)
      return area_;
    double sum = 0;
    const_iterator it = begin (), previous = end ();
    for (--previous;
         it != end ();
         previous = it++)
      {
        const Point *const a = *previous, &b = **it;
        sum += a->x * b.y - b.x * a->y;
      }
    /* The sign tells the direction:
         positive: against the clock,
         negative: with it. */
    return area_ = std::fabs (sum) / 2 * scale;
  }

  bool intersects (const Box &a, const Box &b) throw ()
  {
    return !(a.right < b.left || b.right < a.left
             || a.bottom < b.top || b.bottom < a.top) ;
  }

  int
  classify (const Polygon *polygon, int flags)
  {
    int (*const table[2]) (int) = { &on_open, &on_closed };
    unsigned bits = ~flags & 0x0Fu;
    if (!polygon)
      ;
    else if (polygon->state == Polygon::Closed && flags)
      {
        bits |= 1 << 4 ;
      }
    else do { bits >>= 1; } while (bits & (bits - 1));
    {
      Lock lock (global_mutex ());
      bits = polygon ? table[polygon->state] (+bits) : -1;
    }
    const char *text = "a long message"
                       " on two lines";
    return delete polygon, delete [] text, sizeof (Polygon) > bits
      ? (int) bits : static_cast<int> (std::floor (-1.5 + *text)) ;
  }
}
