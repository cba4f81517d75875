// A tour of what vantrel lays out. Try:  ./run vantrel -s allman examples/tour.cpp
#include <exception>
#include <iostream>
#include <string>
#include <vector>
  #ifndef TOUR_LIMIT
   #define TOUR_LIMIT 8   // directives keep their text
  #endif
namespace tour{
enum Kind{None,Road=1,Rail=2,Ferry=4,/* all of them */Any=Road|Rail|Ferry};
  struct Point{int x,y;};
typedef int(*Compare)(const Point&,const Point&);
extern "C"{int tour_version(void);}
  class Vehicle{
      public:
   explicit Vehicle(const std::string&name="nameless"):name_(name),load_(0),flags(0){}
virtual ~Vehicle(){}
      virtual double speed()const=0;
   const std::string&name()const{return name_;} // a short one
  protected:
std::string name_;
   int load_;
  unsigned flags:4;
};
class Train:public Vehicle,private std::exception{
 public:
Train(int wagons,double power):Vehicle("train"),wagons_(wagons),power_(power){}
~Train()throw(){}
    double speed()const{return wagons_>0?power_/wagons_:power_*2.0;}
  static int count;
 private:
      int wagons_;
double power_;
};
int Train::count=0;
template<class T,int Size=TOUR_LIMIT>class Ring{
  public:
Ring():first(0),used(0){}
bool push(const T&value){
if(used==Size)return false;
  items[(first+used++)%Size]=value;
return true;}
 private:
T items[Size];
   int first,used;
};
template<typename T>inline T largest(const std::vector<T>&values,T smallest){
for(typename std::vector<T>::const_iterator it=values.begin();it!=values.end();++it)if(smallest<*it)smallest=*it;
return smallest;}
static const char*const names[]={"none","road","rail",
  "ferry"};
static int byX(const Point&a,const Point&b){return a.x<b.x?-1:a.x>b.x;}
const char*describe(Kind kind,bool loud){
switch(kind){case None:return names[0];
case Road:case Rail:{const int index=kind==Road?1:2;
   return names[index];}
case Ferry: // by sea
 if(loud)std::cout<<"ship ahoy"<<std::endl;
break;
default:break;}
return names[3];}
// VT-FORMAT-OFF
static const int matrix[2][2] = { { 1,0 },
                                  { 0,1 } };
// VT-FORMAT-ON
int journey(int argc,char**argv){
    Ring<Point>ring;
Point*points=new Point[TOUR_LIMIT];
	int total=0;	// tabs, too
    long scale=-1;
Compare compare=&byX;
for(int i=0;i<TOUR_LIMIT;i++){points[i].x=i*i-3;
points[i].y=-points[i].x&0xff;
if(!ring.push(points[i]))break;else total+=matrix[i&1][0];}
  if(argc>1&&argv[1][0]=='-'){total=-total;}else if(argc>2||compare(points[0],points[1])<0){
        total<<=1; /* doubled */
  }else
      total=0;
do{scale*=10;}while(scale<1000&&scale>-1000);
while(total>TOUR_LIMIT)total/=2;
try{Train train(total,static_cast<double>(scale));
std::vector<double>speeds(1,train.speed());
std::cout<<"The fastest of the trains on this tour, "<<train.name()<<", makes "<<largest<double>(speeds,0.0)<<" miles in an hour, "<<describe(Rail,true)<<'\n';
}catch(const std::exception&problem){std::cerr<<problem.what();
goto done;}catch(...){throw;}
#if 0
 this   is  no code, and stays   as it is
#endif
done:
   delete[]points;
   return total;
}
}
int main(int argc,char*argv[])
{
	return tour::journey(argc,argv);
}
