/* scan.c: a scanner for configuration files.  K&R, and tabs of eight. */
#include <ctype.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include "scan.h"

#define NELEMENTS(a)	(sizeof (a) / sizeof *(a))
#define SKIP_WHILE(cond)		\
	do {				\
		while (cond)		\
			next(s);	\
	} while (0)

typedef int (*handler_t)(struct scanner *s, int c);

struct keyword {
	const char	*name;
	int		 token;
	handler_t	 handler;
};

static int on_include(struct scanner *s, int c);
static int on_set(struct scanner *s, int c);

static const struct keyword keywords[] = {
	{ "include",	TOK_INCLUDE,	on_include },
	{ "set",	TOK_SET,	on_set },
	{ "unset",	TOK_UNSET,	NULL },		/* handled by the parser */
};

static unsigned char class_of[256] = {
	['\t'] = 1, [' '] = 1,
	['0'] = 2, ['1'] = 2, ['2'] = 2,
};

static struct {
	int	depth;
	char	*files[16];
} includes;

static int
next(struct scanner *s)
{
	if (s->pos >= s->len)
		return s->cur = EOF;
	if ((s->cur = s->text[s->pos++]) == '\n') {
		s->line++;
		s->col = 0;
	} else
		s->col++;
	return s->cur;
}

int
scan(struct scanner *s, struct token *t)
{
	int c, quoted = 0;
	size_t i;
	char *p = t->text, *end = t->text + sizeof t->text - 1;

again:
	SKIP_WHILE(s->cur == ' ' || s->cur == '\t');
	t->line = s->line;
	switch (c = s->cur) {
	case EOF:
		return t->kind = TOK_EOF;
	case '#':				/* a comment */
		while (s->cur != '\n' && s->cur != EOF)
			next(s);
		/* FALLTHROUGH */
	case '\n':
		next(s);
		goto again;
	case '"': case '\'':
		quoted = c;
		while (next(s) != quoted) {
			if (s->cur == EOF || s->cur == '\n') {
				fprintf(stderr, "%s:%d:%d: unterminated string (starts with %c)\n", s->file, s->line, s->col, quoted);
				return t->kind = TOK_ERROR;
			}
			if (s->cur == '\\') next(s);
			if (p < end) *p++ = s->cur;
		}
		next(s);
		break;
	default:
		if (isalpha(c) || c == '_') {
			do {
				if (p < end)
					*p++ = c;
			} while (isalnum(c = next(s)) || c == '_');
			*p = '\0';
			for (i = 0; i < NELEMENTS(keywords); i++)
				if (strcmp(t->text, keywords[i].name) == 0)
					return t->kind = keywords[i].token;
		}
		else if (isdigit(c)) for (t->value = 0; isdigit(s->cur); next(s)) t->value = t->value*10 + (s->cur-'0');
		else { next(s); return t->kind = c; }
	}
	*p = '\0';
#if SCAN_DEBUG > 1
	fprintf(stderr, "token \"%s\"\n", t->text);
#elif defined SCAN_DEBUG
	putc('.', stderr);
#endif
	return t->kind = quoted ? TOK_STRING : class_of[(unsigned char)*t->text] == 2 ? TOK_NUMBER : TOK_NAME;
}

#if 0
static void dump(struct scanner *s)
{
   /* was used once */ printf("%p\n",s);
}
#endif

static int on_include(struct scanner *s, int c)
{
	FILE *f;

	if (includes.depth == NELEMENTS(includes.files)) return -1;
	if (!(f = fopen(s->text + s->pos, "r"))) { perror(s->text + s->pos); return -1; }
	includes.files[includes.depth++] = malloc((size_t)(c & 0xff) + 1);
	return fclose(f) == 0 ? 0 : -1;
}

static int on_set(struct scanner *s, int c) { return s && c ? *s->text : !c; }
