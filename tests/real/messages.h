// messages.h : tables of messages, by macros. Generated once, kept by hand since.
#pragma once
#ifndef MESSAGE_MACROS
#define MESSAGE_MACROS

#define STRINGIZE_(x) #x
#define STRINGIZE(x) STRINGIZE_(x)
#define CONCAT_(a,b) a##b
#define CONCAT(a, b) CONCAT_(a, b)
#define LOG(level, ...) \
    (level) < log_level ? (void)0 : \
        log_message((level), __FILE__ "(" STRINGIZE(__LINE__) ")", __VA_ARGS__)

#define DECLARE_MESSAGES(name)                  \
    struct CONCAT(name, Entry) { int id; const char* text; };  \
    extern const CONCAT(name, Entry) name##Table[]

#if defined(__GNUC__)
    #define PRINTF_LIKE(a, b) __attribute__((format(printf, a, b)))
    #define UNUSED __attribute__((unused))
#elif defined(_MSC_VER)
    #define PRINTF_LIKE(a, b)
    #define UNUSED
    #pragma warning(disable : 4786 4503)  /* long names */
#endif

#endif  // MESSAGE_MACROS

enum { LOG_DEBUG, LOG_INFO, LOG_WARNING=4, LOG_ERROR = 8 };
extern int   log_level;
extern void  log_message(int level, const char *where, const char *format, ...);

class CMessageView : public CView
{
	DECLARE_DYNCREATE(CMessageView);
protected:
	CMessageView();           // protected constructor used by dynamic creation

// Attributes
public:
	CString m_strTitle;
	BOOL    m_bModified ;
	int     m_nCount,m_nSelected;

// Operations
public:
	BOOL AddMessage( UINT nID, LPCTSTR lpszText=NULL );
	void RemoveAll();

// Overrides
	// ClassWizard generated virtual function overrides
	//{{AFX_VIRTUAL(CMessageView)
	protected:
	virtual void OnDraw(CDC* pDC);      // overridden to draw this view
	//}}AFX_VIRTUAL

// Implementation
protected:
	virtual ~CMessageView();
#ifdef _DEBUG
	virtual void AssertValid() const;
	virtual void Dump(CDumpContext& dc) const;
#endif

	// Generated message map functions
	//{{AFX_MSG
	afx_msg int  OnCreate(LPCREATESTRUCT lpCreateStruct);
	afx_msg void OnSize(UINT nType, int cx, int cy);
	//AFX_MSG}}
};

inline BOOL CMessageView::AddMessage(UINT nID,LPCTSTR lpszText)
{
	if(lpszText==NULL||*lpszText=='\0')
		return FALSE;
	if( m_nCount>=100 ) { RemoveAll() ; LOG( LOG_INFO , "%d messages removed" , m_nCount ) ; }
	m_strTitle.Format(_T("%s (%d)"),lpszText,++m_nCount);
	m_bModified|=nID!=0&&!(nID&0x8000);
	for(int i=0,n=m_nCount;i<n;i++)
	{
		if(i%2)continue;
		switch(i&3){case 0:m_nSelected=i;break;case 2:m_nSelected=-i;break;default:return FALSE;}
	}
	return TRUE;
}

// VT-FORMAT-OFF
static const short priorities[3][4] = { {  1,   2,   3,   4 },
                                        { 10,  20,  30,  40 },
                                        { -1,  -2,  -3,  -4 } };
// VT-FORMAT-ON
