/* A user's C program: adds one matrix to each of two, and holds the sums against plain C. */
#include <korm.h>
#include <stdio.h>

int main(void) {
    const float matrices[2][2][3] = {{{1, 2, 3}, {4, 5, 6}}, {{-1, -2, -3}, {0.5F, 0.25F, 0.125F}}};
    const float added[2][3] = {{10, 20, 30}, {40, 50, 60}};
    float sums[2][2][3] = {{{0}}};
    const int32_t status = kormAdd_mam_32f(&matrices[0][0][0], sizeof matrices[0], sizeof matrices[0][0], sizeof(float),
                                           &added[0][0], sizeof added[0], sizeof(float), &sums[0][0][0], sizeof sums[0],
                                           sizeof sums[0][0], sizeof(float), 3, 2, 2);
    int k, i, j;
    if (status != korStatusOk) return 1;
    for (k = 0; k < 2; ++k)
        for (i = 0; i < 2; ++i)
            for (j = 0; j < 3; ++j)
                if (sums[k][i][j] != matrices[k][i][j] + added[i][j]) return 2;
    if (kormAdd_mam_32f(0, 4, 4, 4, 0, 4, 4, 0, 4, 4, 4, 1, 1, 1) != korStatusNullPointer) return 3;
    printf("C: %s %s\n", kormGetLibVersion()->name, kormGetLibVersion()->version);
    return 0;
}
